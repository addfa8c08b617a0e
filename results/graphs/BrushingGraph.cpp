#include "results/graphs/BrushingGraph.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/graphs/BarChart.h"
#include "results/graphs/ChartBuilder.h"
#include "results/graphs/GraphTwins.h"
#include "results/graphs/HostGraphs.h"
#include "results/graphs/VariableBars.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr std::uint16_t BrushingFlag = 8;

/// Titles, captions and the subject; captions and the first title line stay empty when the current variable isn't
/// there.
void WriteTexts(CDrillDown& analysis, CChartBuilder& chart, bool hasMissing) {
    const Drill* record = CDrillDown::FindRecord(analysis.DrillDowns, analysis.CurrentDown);
    if (record != nullptr) {
        chart.Subject = SubjectOf(analysis, ResultSide::Drill, *record, hasMissing);
        const std::string name = NameField(analysis, analysis.CurrentDown);
        chart.SetXLabel(name.c_str());
        chart.SetYLabel(CountsCaption(analysis));
        // Intended: the short name alone, and no key, unlike in histograms; the search for the graph depends on finding
        // the words in the title as it stands.
        chart.SetTitle(0, analysis.GetResourceString(BrushingTitleText) + name);
    }
    chart.SetTitle(1, analysis.DrillString());
}

/// False when there is no memory for the chart; what becomes of it at the host plays no part.
bool ShowBrushingGraph(CDrillDown& analysis) {
    const VariableBars bars = CurrentBars(analysis);
    CChartBuilder chart(analysis, 1, bars.Count());
    if (chart.AllocFailed == 1) {
        return false;
    }
    FillBarChart(chart, bars);
    WriteTexts(analysis, chart, bars.HasMissingBar());
    chart.ChartFlags = static_cast<std::uint16_t>(chart.ChartFlags + BrushingFlag);
    chart.Show(ShowAsBars);
    return true;
}

/// Lets the bars of the brushing graph be picked.
/// Intended: also when nothing was drawn, unlike a step that follows its chart; an older brushing graph is taken then.
/// False when the host's lists can't be read; without a graph there is nothing to do.
bool MakeBrushable(CDrillDown& analysis) {
    const auto application = CountedPointer<IApplication>::Adopt(OleAGetApplication());
    if (!application) {
        return false;
    }
    const GraphSearch search = FindBrushingGraph(analysis, OutputsOf(analysis).Get());
    const auto graph = search.End == SearchEnd::Found ? QueryFor<IGraph>(search.Item.Get()) : CountedPointer<IGraph>();
    if (graph) {
        IUnknown* plot = nullptr;
        graph->GetFirstPlot(&plot);  // a host without the property can do without it
        const auto held = CountedPointer<IUnknown>::Adopt(plot);
        if (const auto brushable = QueryFor<IBrushablePlot>(plot)) {
            brushable->PutBrushing(1);
        }
    }
    return search.End != SearchEnd::Failed;
}

/// Looks in the host's list of graphs. What it looked at last is the candidate, found or not.
GraphSearch SearchGraphs(CDrillDown& analysis, IApplication& application) {
    IDocumentCollection* graphs = nullptr;
    const bool listed = Succeeded(application.GetGraphCollection(&graphs));
    const auto held = CountedPointer<IDocumentCollection>::Adopt(graphs);
    return FindBrushingGraph(analysis, listed ? graphs : nullptr);
}

CountedPointer<IDispatch> ActiveItemOf(IApplication& application) {
    IDispatch* item = nullptr;
    application.GetActiveItem(&item);
    return CountedPointer<IDispatch>::Adopt(item);
}

/// The item taken for the brushing graph, which may be none. Ends as failed when the host can't be asked.
GraphSearch FindCandidate(CDrillDown& analysis, IApplication& application) {
    std::int32_t placement = 0;
    if (analysis.StandAloneResults == 0 && !Succeeded(application.GetResultPlacement(&placement))) {
        return {};
    }
    GraphSearch search{SearchEnd::RanOut, {}};
    if (placement == 0) {
        search = SearchGraphs(analysis, application);
    }
    // Intended: with stand-alone results the item looked at last is taken, unlike without them, when the active item
    // is; graphs of a common window depend on it.
    if (analysis.StandAloneResults == 0 && search.End == SearchEnd::RanOut) {
        search.Item = ActiveItemOf(application);
    }
    return search;
}

bool IsSameObject(IDispatch* left, IDispatch* right) {
    return QueryFor<IUnknown>(left).Get() == QueryFor<IUnknown>(right).Get();
}

/// Walks the documents of the analysis back to an item. False when they can't be read.
/// Intended: whether the item is among them decides nothing, unlike whether they can be read; graphs opened by the user
/// depend on it.
bool CanWalkOutputs(CDrillDown& analysis, IDispatch* item) {
    const auto outputs = OutputsOf(analysis);
    std::int32_t count = 0;
    if (!outputs || !Succeeded(outputs->GetCount(&count))) {
        return false;
    }
    for (std::int32_t place = count; place >= 1; --place) {
        const auto output = ItemOf(*outputs, place);
        if (!output) {
            return false;
        }
        if (IsSameObject(output.Get(), item)) {
            return true;
        }
    }
    return true;
}

}  // namespace

VariableBars CurrentBars(CDrillDown& analysis) {
    // Intended: one recount at the first stale record, unlike in histograms, which ask each record; it makes all fresh.
    const auto stale = std::find_if(analysis.DrillDowns->begin(), analysis.DrillDowns->end(),
                                    [](const Drill& record) { return record.Isset == 0; });
    if (stale != analysis.DrillDowns->end()) {
        RecountIfStale(analysis, *stale);
    }
    return {analysis, *analysis.GetCurrentCategories(), analysis.GetCurrentMCount()};
}

std::int16_t CDrillDown::DDNGraphForBrushing(HWND) {
    BringUpToDate();
    return ShowBrushingGraph(*this) && MakeBrushable(*this) ? 1 : 0;
}

bool CDrillDown::GetActiveChartInfo(COutDocument** document) {
    const auto application = CountedPointer<IApplication>::Adopt(OleAGetApplication());
    if (!application) {
        return false;
    }
    const GraphSearch search = FindCandidate(*this, *application);
    if (search.End == SearchEnd::Failed || !CanWalkOutputs(*this, search.Item.Get())) {
        return false;
    }
    *document = nullptr;
    const auto pointer = QueryFor<IMFCPointer>(search.Item.Get());
    return pointer && Succeeded(pointer->GetPointer(document)) && *document != nullptr;
}
