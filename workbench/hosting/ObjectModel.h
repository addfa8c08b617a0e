#pragma once

#include <vector>

class CAnalysisDoc;

namespace quillara {

class ResultDocument;

/// The documents of the analyses that are open, the newest last: what the application knows of them.
[[nodiscard]] const std::vector<CAnalysisDoc*>& OpenAnalyses();
/// The document of an analysis opens, and closes.
void EnterAnalysis(CAnalysisDoc& document);
void LeaveAnalysis(const CAnalysisDoc& document);

/// The document of the analysis that a result belongs to; null when it is no longer open.
[[nodiscard]] CAnalysisDoc* AnalysisOf(const ResultDocument& result);

}  // namespace quillara
