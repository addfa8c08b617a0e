#pragma once

namespace drilltest {

/// What the host's object model does from now on.
struct FaultyHost {
    /// The question that fails, counted over all its objects; 0: none. A question is a getter, the search for the
    /// application or an analysis, or the way from a graph to its document.
    static inline int FailingQuestion = 0;
    static inline int Questions = 0;  ///< asked since this was set to 0
    static inline int Placement = 1;  ///< what the application says of the place of results
};

}  // namespace drilltest
