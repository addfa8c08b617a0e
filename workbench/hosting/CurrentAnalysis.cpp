#include "workbench/hosting/CurrentAnalysis.h"

#include <algorithm>

#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/ObjectModel.h"

namespace quillara {
namespace {

CAnalysisSupport* Current = nullptr;

}  // namespace

CAnalysisSupport* SetCurrentAnalysis(CAnalysisSupport* analysis) {
    CAnalysisSupport* former = DocumentOfCurrentAnalysis() == nullptr ? nullptr : Current;
    Current = analysis;
    return former;
}

CAnalysisDoc* DocumentOfCurrentAnalysis() {
    const auto owner = std::ranges::find_if(OpenAnalyses(), [](const CAnalysisDoc* document) {
        return Current != nullptr && static_cast<const AnalysisDocument*>(document)->Owns(*Current);
    });
    return owner == OpenAnalyses().end() ? nullptr : *owner;
}

}  // namespace quillara
