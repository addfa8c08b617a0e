#include "results/graphs/BarChart.h"

#include <cstdint>
#include <string>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/graphs/ChartBuilder.h"
#include "results/graphs/CountAxis.h"
#include "results/graphs/VariableBars.h"

using namespace drilldown;

namespace {

void SetBarStyle(CChartBuilder& chart) {
    chart.CurrentSeries = 0;
    chart.SeriesWidth[0] = 2 * HalfBarWidth;
    chart.SeriesFlags[0] = 0;
    chart.SeriesKind[0] = SeriesKind::Bars;
    chart.SeriesAttrC[0] = 0;
    chart.SeriesColor[0] = ChartColor::Blue;
}

}  // namespace

void FillBarChart(CChartBuilder& chart, const VariableBars& bars) {
    chart.AllocXScale(bars.Count() + 1);  // slot 0 stays blank: slot i + 1 belongs to bar i
    double highest = 0.0;
    bars.Visit([&](std::int32_t bar, const std::string& name, double height) {
        chart.SetPointX(bar, bar + 1);
        chart.SetPointY(bar, height);
        chart.SetXScale(bar + 1, bar + 1, name);
        highest = height < highest ? highest : height;
    });
    chart.PointCounts[0] = bars.Count();
    chart.XMin = 0.0;
    chart.XMax = bars.Count() + 1;
    chart.XStep = 1.0;
    chart.YMin = 0.0;
    FillCountAxis(chart, highest);
    SetBarStyle(chart);
}

const char* CountsCaption(CDrillDown& analysis) {
    return analysis.GetResourceString(analysis.CaseWeight.Active != 0 ? WeightedCountsCaptionText : CountsCaptionText);
}
