#include <cstdint>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/graphs/BarChart.h"
#include "results/graphs/ChartBuilder.h"
#include "results/graphs/GraphTwins.h"
#include "results/graphs/VariableBars.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr GraphTwin DrillHistograms{&CDrillDown::DrillDowns, DrillHistogramTitleText};
constexpr GraphTwin ReviewHistograms{&CDrillDown::Reviews, ReviewHistogramTitleText};

/// False when there is no memory for the chart; what becomes of it at the host plays no part.
bool ShowHistogram(CDrillDown& analysis, const GraphTwin& twin, const Drill& record) {
    const VariableBars bars(analysis, record.CategorySet, record.MissingWeight);
    CChartBuilder chart(analysis, 1, bars.Count());
    if (chart.AllocFailed == 1) {
        return false;
    }
    FillBarChart(chart, bars);
    chart.SetXLabel(NameField(analysis, record.VarNo).c_str());
    chart.SetYLabel(CountsCaption(analysis));
    chart.SetTitle(0, VariableTitle(analysis, twin.TitleText, record.VarNo));
    chart.SetTitle(1, analysis.DrillString());
    chart.Subject = SubjectOf(analysis, SideOf(twin.Set), record, bars.HasMissingBar());
    chart.Show(ShowAsBars);
    return true;
}

}  // namespace

std::int16_t CDrillDown::DDNHistograms(HWND) {
    return static_cast<std::int16_t>(ShowEach(*this, DrillHistograms, ShowHistogram));
}

std::int16_t CDrillDown::RVHistograms(HWND) {
    return static_cast<std::int16_t>(ShowEach(*this, ReviewHistograms, ShowHistogram));
}
