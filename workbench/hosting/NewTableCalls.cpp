// The data tables that an analysis writes.

#include <algorithm>
#include <new>

#include "host/AnalysisSupport.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DataDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/NewTable.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TextFields.h"

using quillara::DataTable;
using quillara::NewTable;
using quillara::NewTableRequest;
using quillara::NewTables;
using quillara::RowSet;

namespace {

constexpr int MostVariables = 32766;

/// "subset of cars.csv", then "subset 2 of cars.csv" and so on.
std::string NameOfSubset(const DataTable& table, const NewTables& made) {
    const std::size_t number = made.FinishedSoFar() + 1;
    const std::string subset = number == 1 ? "subset" : "subset " + std::to_string(number);
    return table.FileName.empty() ? subset : subset + " of " + table.FileName;
}

}  // namespace

short CAnalysisSupport::SubsetAndAddEx(int /*code*/, const char* /*name*/, int variables, int /*reserved*/,
                                       const short* list, int cases, const char* /*names*/, const char* /*longNames*/,
                                       int /*longNameWidth*/, const char* header, int caseNameWidth,
                                       std::uint32_t* position) {
    *position = 0;
    const auto fromInput = variables < 1 ? 0 : variables - std::count(list, list + variables, short{0});
    if (variables < 1 || fromInput > MostVariables || caseNameWidth < 0) {
        return 0;
    }
    const DataTable& input = quillara::TableOf(Document).Table();
    NewTables& tables = quillara::NewTablesOf(Document);
    try {
        const NewTableRequest request{NameOfSubset(input, tables),
                                      quillara::TextOfField({header, HeaderTextWidth}),
                                      {list, static_cast<std::size_t>(variables)},
                                      static_cast<std::size_t>(caseNameWidth),
                                      cases};
        return tables.Add(std::make_unique<NewTable>(input, request));
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

short CAnalysisSupport::SubsetAndAddEx(int code, const char* name, int variables, int reserved, const short* list,
                                       int cases, const char* names, const char* longNames, int longNameWidth,
                                       const char* header, int caseNameWidth, std::uint32_t* position,
                                       const std::int32_t* /*places*/, const std::int32_t* /*sources*/,
                                       int /*categoricals*/) {
    // The labels of every variable come along, categorical or not.
    return SubsetAndAddEx(code, name, variables, reserved, list, cases, names, longNames, longNameWidth, header,
                          caseNameWidth, position);
}

int CAnalysisSupport::PutDataF(short table, const void* bytes, std::uint32_t position, int length) {
    NewTable* target = quillara::NewTablesOf(Document).Find(table);
    if (target == nullptr || length < 0) {
        return 1;
    }
    return target->Write({static_cast<const char*>(bytes), static_cast<std::size_t>(length)}, position) ? 0 : 1;
}

void CAnalysisSupport::MatClo(short table) {
    NewTables& tables = quillara::NewTablesOf(Document);
    const std::unique_ptr<NewTable> written = tables.Take(table);
    if (written == nullptr) {
        return;
    }
    const RowSet* cases = quillara::RemainingCases(*static_cast<quillara::AnalysisDocument*>(Document));
    const auto finished = written->Finish(quillara::TableOf(Document).Table(), cases);
    tables.Keep(finished);
    if (quillara::PressRecord* press = quillara::DialogsOf(Document).Script.Press) {
        press->Add(CountedPointer<IDispatch>::Adopt(new quillara::DataDocument(finished, tables.LettingGo(finished))));
    }
    if (const auto& takeData = quillara::SurroundingsOf(Document).Services.TakeData) {
        takeData(finished);
    }
}

void CAnalysisSupport::AbortOutput(short table) {
    quillara::NewTablesOf(Document).Take(table);
}
