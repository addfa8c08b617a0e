#pragma once

#include <unordered_set>

class CAnalysisDoc;

namespace quillara {

/// What has been allocated for an analysis, and which allocation is to fail.
struct AllocationRecord {
    std::unordered_set<void*> Live;
    int Calls = 0;
    int FailingCall = 0;  ///< counted from 1; 0: none
};

/// That of a document; null without one.
[[nodiscard]] AllocationRecord* MemoryOf(CAnalysisDoc* document);

}  // namespace quillara
