#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/graphs/ChartBuilder.h"
#include "results/graphs/GraphTwins.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr GraphTwin DrillStacked{&CDrillDown::DrillDowns, DrillStackedTitleText};
constexpr GraphTwin ReviewStacked{&CDrillDown::Reviews, ReviewStackedTitleText};

constexpr std::int32_t StackedFlags = 384;
constexpr double StackedWidth = 0.9;
constexpr double HighestPercent = 100.0;

/// A variable as a column, divided into its categories from the last down to the first.
struct Column {
    const Drill* Record;
    double MissingWeight;

    // Intended: missing data has a layer whatever CountMD says, unlike in histograms and pies; a column depends on
    // showing all cases.
    [[nodiscard]] bool HasMissingLayer() const { return IsNonZero(MissingWeight); }
    [[nodiscard]] double Total() const { return Record->ValidWeight + MissingWeight; }
    /// Heights of a column: its top, and one below each layer.
    [[nodiscard]] std::size_t Heights() const { return Record->CategorySet.size() + (HasMissingLayer() ? 2 : 1); }
};

/// Intended: the missing weight is that from before the recount, unlike the valid weight; what a column's layers add up
/// to depends on the order.
std::vector<Column> ColumnsOf(CDrillDown& analysis, const CDrillDown::DrillSet& set) {
    std::vector<Column> columns;
    for (const Drill& record : set) {
        columns.push_back({&record, record.MissingWeight});
        RecountIfStale(analysis, record);
    }
    return columns;
}

std::size_t SeriesFor(const std::vector<Column>& columns) {
    std::size_t series = 0;
    for (const Column& column : columns) {
        series = std::max(series, column.Heights());
    }
    return series;
}

/// Writes the heights of one column, in percent, from the top down: series j has the share that lies below layer j.
class ColumnWriter {
  public:
    ColumnWriter(CChartBuilder& chart, std::int32_t columns, std::int32_t place)
        : Chart(chart), Columns(columns), Place(place) {}

    void Write(const Column& column) {
        WriteNext(HighestPercent);
        const double total = column.Total();
        if (column.HasMissingLayer()) {
            WriteNext(Height - column.MissingWeight * HighestPercent / total);
        }
        const CDrillDown::CategorySetType& categories = column.Record->CategorySet;
        std::for_each(categories.rbegin(), categories.rend(),
                      [&](const Categories& category) { WriteNext(Height - category.Count * HighestPercent / total); });
    }

  private:
    void WriteNext(double height) {
        double* points = Chart.SeriesData[Series++];
        points[Place] = Place + 1;
        points[Columns + Place] = height;
        Height = height;
    }

    CChartBuilder& Chart;
    std::int32_t Columns;
    std::int32_t Place;
    std::int32_t Series = 0;
    double Height = 0.0;
};

/// Intended: a column that doesn't reach a series has zeros there, unlike points never written; the host draws nothing
/// for them.
void PrepareSeries(CChartBuilder& chart, std::int32_t columns) {
    for (std::int16_t series = 0; series < chart.SeriesCount; ++series) {
        chart.ClearPoints(series, columns + 1);
        chart.SeriesFlags[series] = StackedFlags;
        chart.PointCounts[series] = columns;
        chart.SeriesWidth[series] = StackedWidth;
    }
}

/// False when a variable has no cases.
bool WriteColumns(CDrillDown& analysis, CChartBuilder& chart, const std::vector<Column>& columns) {
    const auto count = static_cast<std::int32_t>(columns.size());
    chart.AllocXScale(count + 1);
    for (std::int32_t place = 0; place < count; ++place) {
        const Column& column = columns[static_cast<std::size_t>(place)];
        // Intended: one variable without cases takes the whole plot, unlike in histograms and pies, which show it
        // empty; shares of nothing can't be compared.
        if (!IsNonZero(column.Total())) {
            return false;
        }
        chart.SetXScale(place + 1, place + 1, NameField(analysis, column.Record->VarNo));
        chart.SetYLabel(analysis.GetResourceString(PercentCaptionText));
        ColumnWriter(chart, count, place).Write(column);
    }
    return true;
}

void SetRanges(CChartBuilder& chart, std::int32_t columns) {
    chart.XMin = 0.0;
    chart.XMax = columns + 1;
    chart.XStep = 1.0;
    chart.YMin = 0.0;
    chart.YMax = 100.1;
    chart.YStep = 20.0;
}

ResultSubject SubjectOfColumns(CDrillDown& analysis, ResultSide side, const std::vector<Column>& columns) {
    SubjectWriter subject(analysis, side);
    for (const Column& column : columns) {
        subject.AddCategories(*column.Record, column.HasMissingLayer());
    }
    return subject.Take();
}

int ShowStackedPlot(CDrillDown& analysis, const GraphTwin& twin) {
    analysis.BringUpToDate();
    const std::vector<Column> columns = ColumnsOf(analysis, *(analysis.*twin.Set));
    const std::size_t series = SeriesFor(columns);
    if (series > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
        return 0;
    }
    const auto count = static_cast<std::int32_t>(columns.size());
    CChartBuilder chart(analysis, static_cast<std::int16_t>(series), count + 1);
    if (chart.AllocFailed == 1) {
        return 0;
    }
    PrepareSeries(chart, count);
    if (!WriteColumns(analysis, chart, columns)) {
        return 0;
    }
    chart.Subject = SubjectOfColumns(analysis, SideOf(twin.Set), columns);
    chart.SetTitle(0, analysis.GetResourceString(twin.TitleText));
    chart.SetTitle(1, analysis.DrillString());
    SetRanges(chart, count);
    chart.PointLabelWidth = 0;
    chart.ShowStacked();
    return 1;
}

}  // namespace

int CDrillDown::DDNStackedplots(short, HWND) {
    return ShowStackedPlot(*this, DrillStacked);
}

int CDrillDown::RVStackedplots(short, HWND) {
    return ShowStackedPlot(*this, ReviewStacked);
}
