#include <cstddef>
#include <cstdint>
#include <string>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/graphs/ChartBuilder.h"
#include "results/graphs/GraphTwins.h"
#include "results/graphs/VariableBars.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr GraphTwin DrillPies{&CDrillDown::DrillDowns, DrillPieTitleText};
constexpr GraphTwin ReviewPies{&CDrillDown::Reviews, ReviewPieTitleText};

constexpr std::int32_t PieFlags = 192;
constexpr double SliceWidth = 0.9;

/// Intended: 12 bytes at most, a longer name as its key, unlike the 20 bytes of axis labels; point labels of the host
/// are that wide.
std::string SliceLabel(CDrillDown& analysis, std::string name) {
    if (name.size() > CChartBuilder::PointLabelSlot) {
        analysis.Get8CharHash(name);
    }
    return name;
}

/// Intended: one point more than there are slices, of 0 and without a label, unlike in histograms; where the y values
/// begin depends on the number of points.
void FillSlices(CDrillDown& analysis, CChartBuilder& chart, const VariableBars& slices) {
    const std::int32_t points = slices.Count() + 1;
    chart.ClearPoints(0, points);
    slices.Visit([&](std::int32_t slice, const std::string& name, double count) {
        chart.SetPointX(slice, slice + 1);
        chart.SetPointY(slice, count);
        chart.SetPointLabel(slice, SliceLabel(analysis, name));
    });
    chart.PointCounts[0] = points;
    chart.SeriesFlags[0] = PieFlags;
    chart.SeriesWidth[0] = SliceWidth;
    chart.XMin = 0.0;
    chart.XMax = points;
    chart.XStep = 1.0;
    chart.YMin = 0.0;
    chart.YMax = 100.0;
    chart.YStep = 20.0;
}

/// False when there is no memory for the chart; what becomes of it at the host plays no part.
bool ShowOnePie(CDrillDown& analysis, const GraphTwin& twin, const Drill& record) {
    const VariableBars slices(analysis, record.CategorySet, record.MissingWeight);
    CChartBuilder chart(analysis, 1, slices.Count() + 1);
    if (chart.AllocFailed == 1) {
        return false;
    }
    FillSlices(analysis, chart, slices);
    chart.SetXLabel(NameField(analysis, record.VarNo).c_str());
    chart.SetTitle(0, VariableTitle(analysis, twin.TitleText, record.VarNo));
    chart.SetTitle(1, analysis.DrillString());
    chart.Subject = SubjectOf(analysis, SideOf(twin.Set), record, slices.HasMissingBar());
    chart.ShowPie();
    return true;
}

}  // namespace

int CDrillDown::DDNPiecharts(short, HWND) {
    return ShowEach(*this, DrillPies, ShowOnePie);
}

int CDrillDown::RVPiecharts(short, HWND) {
    return ShowEach(*this, ReviewPies, ShowOnePie);
}
