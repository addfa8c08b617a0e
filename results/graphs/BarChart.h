#pragma once

class CChartBuilder;
class CDrillDown;
namespace drilldown {
class VariableBars;
}  // namespace drilldown

/// Half the width of a bar, in units of the x axis: bar i stands around i + 1.
inline constexpr double HalfBarWidth = 0.45;

/// Makes a chart of one series the bar chart of a variable: bars, their labels, ranges, count axis and style. Titles
/// and captions are left to the caller. The chart was made for one series of as many points as there are bars.
void FillBarChart(CChartBuilder& chart, const drilldown::VariableBars& bars);

/// The caption of an axis of counts: it tells whether a weight is in force.
[[nodiscard]] const char* CountsCaption(CDrillDown& analysis);
