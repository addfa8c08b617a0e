#pragma once

#include <vector>

namespace quillara {

struct AnalysisState;
class ResultDocument;

/// The states of the analyses that are open, the newest last: what the application knows of them.
[[nodiscard]] const std::vector<AnalysisState*>& OpenAnalyses();
/// A state opens, and closes.
void EnterAnalysis(AnalysisState& state);
void LeaveAnalysis(const AnalysisState& state);

/// The state of the analysis that a document belongs to; null when it is no longer open.
[[nodiscard]] AnalysisState* AnalysisOf(const ResultDocument& document);

}  // namespace quillara
