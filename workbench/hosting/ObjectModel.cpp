// The application and its analyses, as the module and scripts get at them.

#include "workbench/hosting/ObjectModel.h"

#include <algorithm>

#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "host/GraphAutomation.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisObject.h"
#include "workbench/hosting/ApplicationObject.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/RoutedResults.h"

namespace {

std::vector<CAnalysisDoc*>& Open() {
    static std::vector<CAnalysisDoc*> documents;
    return documents;
}

}  // namespace

IApplication* OleAGetApplication() {
    static const auto application = CountedPointer<IApplication>::Adopt(new quillara::ApplicationObject);
    return CountedPointer(application).Detach();
}

IUnknown* OleAGetAnalysis(CAnalysisDoc* document) {
    IDispatch* analysis = nullptr;
    return document != nullptr && Succeeded(document->GetExternQlaAnalysisPointer(&analysis)) ? analysis : nullptr;
}

HRESULT CAnalysisDoc::GetExternQlaAnalysisPointer(IDispatch** analysis) {
    *analysis = static_cast<quillara::AnalysisDocument*>(this)->AutomationObject().Detach();
    return *analysis == nullptr ? CO_E_OBJNOTCONNECTED : S_OK;
}

void CAnalysisSupport::Replace8CharGrow(std::string& text, bool /*nested*/) {
    text = quillara::Replace8CharGrow(text);
}

namespace quillara {

const std::vector<CAnalysisDoc*>& OpenAnalyses() {
    return Open();
}

void EnterAnalysis(CAnalysisDoc& document) {
    Open().push_back(&document);
}

void LeaveAnalysis(const CAnalysisDoc& document) {
    std::erase(Open(), &document);
}

CAnalysisDoc* AnalysisOf(const ResultDocument& result) {
    const auto holds = [&](CAnalysisDoc* document) {
        const auto& known = ResultsOf(document).Documents.OfAnalysis();
        return std::ranges::find(known, &result) != known.end();
    };
    const auto owner = std::ranges::find_if(Open(), holds);
    return owner == Open().end() ? nullptr : *owner;
}

}  // namespace quillara
