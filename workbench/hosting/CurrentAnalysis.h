#pragma once

class CAnalysisDoc;
class CAnalysisSupport;

namespace quillara {

/// Makes an analysis the current one and gives the one that was; null stands for none. One that is no longer open
/// counts as none: it is never looked into, so that a scope may bring back what has closed meanwhile.
CAnalysisSupport* SetCurrentAnalysis(CAnalysisSupport* analysis);

/// The document of the current analysis, by which the application tells whose graphs it shows; null: no analysis is
/// current, and the application shows those of all.
[[nodiscard]] CAnalysisDoc* DocumentOfCurrentAnalysis();

}  // namespace quillara
