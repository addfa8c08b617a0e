#include "results/graphs/HostGraphs.h"
#include "resources/StringTable.h"

#include <cstring>
#include <optional>
#include <string>

#include "engine/DrillDown.h"
#include "platform/OwnedText.h"

using namespace drilldown;

namespace {

/// Nothing when the graph doesn't say.
std::optional<std::u16string> TitleOf(IGraph& graph) {
    OwnedText title;
    if (!Succeeded(graph.GetTitle(title.Put()))) {
        return std::nullopt;
    }
    return std::u16string(title.View());
}

/// Whether an item is a graph with these words in its title, or can't be read.
SearchEnd Examine(IDispatch* item, const std::u16string& words) {
    if (item == nullptr) {
        return SearchEnd::Failed;
    }
    const auto graph = QueryFor<IGraph>(item);
    if (!graph) {
        return SearchEnd::RanOut;
    }
    const std::optional<std::u16string> title = TitleOf(*graph);
    if (!title) {
        return SearchEnd::Failed;
    }
    return title->find(words) == std::u16string::npos ? SearchEnd::RanOut : SearchEnd::Found;
}

}  // namespace

CountedPointer<IDocumentCollection> drilldown::OutputsOf(CDrillDown& analysis) {
    const auto automation = CountedPointer<IUnknown>::Adopt(OleAGetAnalysis(analysis.GetDocument()));
    const auto object = QueryFor<IAnalysisAutomation>(automation.Get());
    IDocumentCollection* outputs = nullptr;
    if (!object || !Succeeded(object->GetAnalysisOutputs(&outputs))) {
        return {};
    }
    return CountedPointer<IDocumentCollection>::Adopt(outputs);
}

CountedPointer<IDispatch> drilldown::ItemOf(IDocumentCollection& documents, std::int32_t place) {
    VARIANT index;
    index.Type = VariantType::Integer;
    index.Integer = place;
    IDispatch* item = nullptr;
    if (!Succeeded(documents.GetItem(index, &item))) {
        return {};
    }
    return CountedPointer<IDispatch>::Adopt(item);
}

GraphSearch drilldown::FindBrushingGraph(CDrillDown& analysis, IDocumentCollection* documents) {
    const char* text = analysis.GetResourceString(BrushingTitleText);
    const std::u16string words(text, text + std::strlen(text));  // plain letters
    std::int32_t count = 0;
    if (documents == nullptr || !Succeeded(documents->GetCount(&count))) {
        return {};
    }
    GraphSearch search{SearchEnd::RanOut, {}};
    for (std::int32_t place = count; place >= 1 && search.End == SearchEnd::RanOut; --place) {
        search.Item = ItemOf(*documents, place);
        search.End = Examine(search.Item.Get(), words);
    }
    return search;
}
