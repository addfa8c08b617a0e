#pragma once

#include <cstdint>

#include "host/GraphAutomation.h"
#include "platform/CountedPointer.h"

class CDrillDown;

namespace drilldown {

// The host's lists of documents, and the brushing graph in them. The brushing graph is known by the words of its title
// alone; nobody holds it.

/// The result documents of an analysis; nothing when the host doesn't give them.
[[nodiscard]] CountedPointer<IDocumentCollection> OutputsOf(CDrillDown& analysis);

/// The item at a place, from 1; nothing when the list doesn't give it.
[[nodiscard]] CountedPointer<IDispatch> ItemOf(IDocumentCollection& documents, std::int32_t place);

enum class SearchEnd : std::uint8_t {
    Found,
    RanOut,  ///< no graph of the list has the title
    Failed,  ///< the list, an item or a title couldn't be read
};

struct GraphSearch {
    SearchEnd End = SearchEnd::Failed;
    CountedPointer<IDispatch> Item;  ///< the item looked at last: the graph, or the first of the list
};

/// Looks for the brushing graph from the last item of a list to the first. Items that aren't graphs are passed over. A
/// null list ends as failed.
[[nodiscard]] GraphSearch FindBrushingGraph(CDrillDown& analysis, IDocumentCollection* documents);

}  // namespace drilldown
