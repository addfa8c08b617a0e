#include <algorithm>

#include "host/AnalysisSupport.h"
#include "workbench/hosting/CaseServices.h"
#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableCaseBlocks.h"
#include "workbench/hosting/TableInUse.h"

using quillara::DataTable;

namespace {

constexpr std::int32_t CasesPerProgressReport = 1024;

}  // namespace

int CAnalysisSupport::cstrtw(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    quillara::TableInUse& data = quillara::TableOf(Document);
    if (caseNumber < 1 || caseNumber > data.Table().Cases) {
        return static_cast<int>(CaseResult::Stop);
    }
    const auto row = static_cast<std::size_t>(caseNumber) - 1;
    const double* stored = data.Rows.Row(row);
    for (std::size_t i = 0; i < data.Rows.Width(); ++i) {
        values[i + 1] = stored[i];
    }
    *weighted = data.Weights.empty() ? 0 : 1;
    *weight = data.Weights.empty() ? 1.0 : data.Weights[row];
    *tag = 0;
    if (caseNumber % CasesPerProgressReport == 0 || caseNumber == data.Table().Cases) {
        quillara::SurroundingsOf(Document).ReportProgress(caseNumber);
    }
    return static_cast<int>(data.ResultOf(caseNumber));
}

int CAnalysisSupport::cstart(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    return cstrtw(caseNumber, values, weighted, weight, tag);
}

void CAnalysisSupport::ReadTableValue(int variableIndex, int caseIndex, double* value) {
    const DataTable& table = quillara::TableOf(Document).Table();
    *value = table.Variables[static_cast<std::size_t>(variableIndex)].Values[static_cast<std::size_t>(caseIndex)];
}

std::string CAnalysisSupport::GetCaseName(int caseIndex) {
    const auto& names = quillara::TableOf(Document).Table().CaseNames;
    const bool known = caseIndex >= 0 && static_cast<std::size_t>(caseIndex) < names.size();
    return known ? names[static_cast<std::size_t>(caseIndex)] : std::string();
}

CaseBlocks* CAnalysisSupport::GetCaseBlocks() {
    quillara::TableCaseBlocks& blocks = quillara::CaseBlocksOf(Document);
    return Document != nullptr && blocks.IsOffered ? &blocks : nullptr;
}

TableColumns* CAnalysisSupport::GetTableColumns() {
    return quillara::CaseServicesOf(Document).Columns;
}

CaseConditions* CAnalysisSupport::GetCaseConditions() {
    return quillara::CaseServicesOf(Document).Conditions;
}

ParallelRuns* CAnalysisSupport::GetParallelRuns() {
    return quillara::CaseServicesOf(Document).Threads;
}

std::uint64_t CAnalysisSupport::GetCaseRevision() {
    return quillara::CaseServicesOf(Document).Revision;
}
