// What every analysis inherits: its start, and the quiet defaults of what it may override.

#include <algorithm>
#include <span>

#include "host/AnalysisContext.h"
#include "host/AnalysisSupport.h"
#include "platform/ModuleInstance.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/TableInUse.h"

CAnalysisSupport::CAnalysisSupport(CAnalysisDoc* document, const CAnalysisContext& context)
    : Document(document), Context(context) {}

CAnalysisSupport::~CAnalysisSupport() = default;

int CAnalysisSupport::InitializeAfterFileChanged() {
    return 1;
}

void CAnalysisSupport::Initialize() {}

bool CAnalysisSupport::ForwardSequence(int /*from*/, int /*to*/) const {
    return true;
}

const ModuleInstance* CAnalysisSupport::GetLibInstance() {
    return Context.Instance();
}

const char* CAnalysisSupport::GetResourceString(int id) {
    const std::span<const StringResource> strings = GetLibInstance()->Strings;
    const auto row = std::ranges::lower_bound(strings, id, {}, &StringResource::Id);
    return row != strings.end() && row->Id == id ? row->Text : "";
}

int CAnalysisSupport::GetAnalysisID() {
    return 0;
}

std::string CAnalysisSupport::GetAnalysisName() const {
    return {};
}

bool CAnalysisSupport::BeforeRouteOutput(IDispatch* /*document*/) {
    return false;
}

void CAnalysisSupport::BeforeClose() {}

void CAnalysisSupport::SetSequenceTable(const SequenceStep* table, int rows) {
    Sequence = table;
    SequenceRows = table == nullptr ? 0 : rows;
}

void CAnalysisSupport::InitCommons(OrvTag* table, Orv88Tag* names, b1_com* /*line*/, Wght_com* weight,
                                   _AddMenu* /*menu*/) {
    if (Document != nullptr) {
        quillara::TableOf(Document).Share({table, names, weight});
    }
}

int CAnalysisSupport::IsOleAutomation() const {
    return quillara::DialogsOf(Document).Script.IsDriven ? 1 : 0;
}
