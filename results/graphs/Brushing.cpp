#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "host/Brushing.h"
#include "host/GraphAutomation.h"
#include "resources/StringTable.h"
#include "results/graphs/BarChart.h"
#include "results/graphs/BrushingGraph.h"
#include "results/graphs/HostGraphs.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr int BrushRegionKind = 4;
constexpr int NoPick = -1;
constexpr int DrillDownAction = 0;
constexpr int DrillUpAction = 1;

/// What a cycle of brushing comes to.
struct BrushingOutcome {
    std::int16_t Result;
    int Item;
    int Action;
};

constexpr BrushingOutcome UserHasLeft{0, NoPick, NoPick};
constexpr BrushingOutcome UnusablePick{-1, NoPick, NoPick};

/// "CATEGORY: name", and "COUNT: height" without zeros at the end of the number, in a second line.
std::string TipOf(CDrillDown& analysis, const std::string& name, double height) {
    std::string tip = FillFormat(analysis.GetResourceString(CategoryTipText), {name}) +
                      FillFormat(analysis.GetResourceString(CountTipText), {ShortDecimals(height)});
    analysis.Replace8CharGrow(tip, true);
    analysis.StripFormatting(tip);
    return tip;
}

void FillRegions(CDrillDown& analysis, const VariableBars& bars, CGraphBrushRgnGraph& regions, double* heights) {
    regions.resize(bars.Count());
    bars.Visit([&](std::int32_t bar, const std::string& name, double height) {
        const double centre = bar + 1;
        heights[bar] = height;
        regions.set(bar, 0.0, centre - HalfBarWidth, height, centre + HalfBarWidth,
                    TipOf(analysis, name, height).c_str(), BrushRegionKind);
    });
}

bool IsEmpty(const Categories& category) {
    return !IsNonZero(category.Count);
}

/// The first category with cases; the number of categories when all are empty.
int FirstFilledBar(const CDrillDown::CategorySetType& categories) {
    const auto filled = std::find_if_not(categories.begin(), categories.end(), IsEmpty);
    return static_cast<int>(std::distance(categories.begin(), filled));
}

/// Intended: the row counts the non-empty categories alone, unlike the bar, which counts all; the list that
/// MoveToDrillUps reads shows no others. The Missing bar is the row behind the last.
std::int32_t RowOfBar(const CDrillDown::CategorySetType& categories, int bar) {
    std::int32_t row = 0;
    int index = 0;
    for (const Categories& category : categories) {
        if (!IsEmpty(category)) {
            if (index == bar) {
                break;
            }
            ++row;
        }
        ++index;
    }
    return row;
}

/// The interaction of one cycle: the regions of the bars, and the options.
class BrushingCycle {
  public:
    BrushingCycle(CDrillDown& analysis, const VariableBars& bars, double* heights)
        : Analysis(analysis), Bars(bars.Count()), Heights(heights), Regions(*Brushing.addGraph(-1)) {
        FillRegions(analysis, bars, Regions, heights);
    }

    BrushingOutcome Run(COutDocument* document) {
        Regions.setSelected(FirstFilledBar(*Analysis.GetCurrentCategories()));
        int choice = 0;
        if (!Brushing.DoBrushing(document, Options().data(), choice, true, true, false)) {
            return UserHasLeft;
        }
        int bar = NoPick;
        return Regions.getSelected(bar) ? TakePick(bar, choice) : TakeNoPick(bar, choice);
    }

  private:
    /// Texts of the options by action, closed by null.
    [[nodiscard]] std::array<const char*, 3> Options() const {
        const bool canGoUp = !Analysis.DrillUps->empty();
        return {Analysis.GetResourceString(DrillDownOptionText),
                canGoUp ? Analysis.GetResourceString(DrillUpOptionText) : nullptr, nullptr};
    }

    static BrushingOutcome TakeNoPick(int bar, int choice) {
        return choice == DrillUpAction ? BrushingOutcome{1, bar, DrillUpAction} : UnusablePick;
    }

    [[nodiscard]] BrushingOutcome TakePick(int bar, int choice) const {
        // Intended: an empty bar can't be picked whatever the option, unlike no bar at all, with which drilling up is
        // possible; the caller ends brushing on it.
        if (bar < 0 || bar >= Bars || !IsNonZero(Heights[bar])) {
            return UnusablePick;
        }
        Analysis.SetSelected(RowOfBar(*Analysis.GetCurrentCategories(), bar));
        return {1, bar, choice == DrillUpAction ? DrillUpAction : DrillDownAction};
    }

    CDrillDown& Analysis;
    std::int32_t Bars;
    double* Heights;
    CGraphBrushingExt Brushing{true};
    CGraphBrushRgnGraph& Regions;
};

}  // namespace

std::int16_t CDrillDown::DDNBrushing(int* item, int* action) {
    BringUpToDate();
    const VariableBars bars = CurrentBars(*this);
    const HostBuffer<double> heights(*this, static_cast<std::size_t>(bars.Count()));
    if (!heights) {
        return 0;
    }
    BrushingCycle cycle(*this, bars, heights.data());
    COutDocument* document = nullptr;
    // Intended: the outputs stay as they are without a graph, unlike when the user leaves; callers set them to none.
    if (!GetActiveChartInfo(&document)) {
        return 0;
    }
    const BrushingOutcome outcome = cycle.Run(document);
    *item = outcome.Item;
    *action = outcome.Action;
    return outcome.Result;
}

std::int16_t CDrillDown::DDNCloseBrushing(HWND) {
    const auto application = CountedPointer<IApplication>::Adopt(OleAGetApplication());
    if (!application) {
        return 0;
    }
    // Intended: nothing is closed, unlike what the name says; hosts that call it keep their graph.
    return FindBrushingGraph(*this, OutputsOf(*this).Get()).End == SearchEnd::Failed ? 0 : 1;
}
