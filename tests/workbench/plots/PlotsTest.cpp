#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <sstream>

#include "tests/workbench/Tables.h"
#include "workbench/plots/BoxPlots.h"
#include "workbench/plots/Histograms3D.h"
#include "workbench/plots/ScatterMatrices.h"

namespace quillara {
namespace {

PlotRows AllRows(const DataTable& table) {
    PlotRows rows(static_cast<std::size_t>(table.Cases));
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

/// "name 5: whisker [box middle box] whisker; outliers | extremes".
std::string InShort(const BoxStatistics& box) {
    std::ostringstream text;
    text.precision(8);
    text << box.Variable << ' ' << box.Cases << ": " << box.WhiskerLow << " [" << box.BoxLow << ' ' << box.Middle << ' '
         << box.BoxHigh << "] " << box.WhiskerHigh << ';';
    for (const double value : box.Outliers) {
        text << ' ' << value;
    }
    text << " |";
    for (const double value : box.Extremes) {
        text << ' ' << value;
    }
    return text.str();
}

// Quartiles as quantile(x) of R gives them, deviations as sd(x).
TEST(BoxPlots, ShowTheStatisticsOfTheirType) {
    const double none = Missing;
    const DataTable table = TableOf(
        {Numbers("x", {1, 2, 3, 4, 5, 6, 7, 8, 2, 20, none, Infinity}),
         Numbers("one", {4, none, none, none, none, none, none, none, none, none, none, none}),
         Numbers("none", std::vector<double>(12, none)), Numbers("far", {0, 1, 1, 2, 2, 3, 3, 4, 9, 30, 9, -5})});
    struct Case {
        BoxType Type;
        std::size_t Variable;
        const char* Expected;
    };
    // clang-format off
    const Case cases[] = {
        // Type                         Variable
        {BoxType::MedianQuartilesRange, 0, "x 10: 1 [2.25 4.5 6.75] 8; 20 |"},
        {BoxType::MedianQuartilesRange, 1, "one 1: 4 [4 4 4] 4; |"},
        {BoxType::MedianQuartilesRange, 2, "none 0: 0 [0 0 0] 0; |"},
        {BoxType::MedianQuartilesRange, 3, "far 12: -5 [1 2.5 5.25] 9; | 30"},
        {BoxType::MeanSEAndSD,          0, "x 10: 0.30656958 [4.0628248 5.8 7.5371752] 11.29343; |"},
        {BoxType::MeanSDAnd196SD,       0, "x 10: -4.9671236 [0.30656958 5.8 11.29343] 16.567124; |"},
        {BoxType::MeanSEAnd196SE,       0, "x 10: 2.3951366 [4.0628248 5.8 7.5371752] 9.2048634; |"},
        {BoxType::MeanSEAnd196SE,       1, "one 1: 4 [4 4 4] 4; |"},
    };
    // clang-format on
    for (const Case& each : cases) {
        const BoxPlot plot = BoxPlotOf(table, {each.Variable}, AllRows(table), each.Type);
        EXPECT_EQ(InShort(plot.Boxes.at(0)), each.Expected);
    }
}

TEST(ScatterMatrices, HoldPairsOfValidCasesAndTheirLine) {
    const DataTable table = TableOf(
        {Numbers("x", {1, 2, 3, 4, Missing}), Numbers("y", {2, 4, 6, Missing, 1}), Numbers("c", {5, 5, 5, 5, 5})});
    const PlotRows rows = AllRows(table);
    const ScatterMatrix matrix = ScatterMatrixOf({table, {0, 1, 2}, rows, 136, {}});
    ASSERT_EQ(matrix.Cells.size(), 9U);
    const ScatterCell& cell = matrix.Cells[3];  // y against x
    EXPECT_EQ(cell.Cases, 3);
    EXPECT_DOUBLE_EQ(cell.Correlation, 1);
    EXPECT_DOUBLE_EQ(cell.Slope, 2);
    EXPECT_NEAR(cell.Intercept, 0, 1e-12);
    EXPECT_EQ(cell.Points, (std::vector<std::pair<float, float>>{{1, 2}, {2, 4}, {3, 6}}));
    EXPECT_TRUE(std::isnan(matrix.Cells[6].Correlation)) << "a constant has none";
    EXPECT_TRUE(matrix.Cells[0].Points.empty());
    const BinnedCounts& bins = matrix.Variables[1].Histogram;
    EXPECT_EQ(std::accumulate(bins.Counts.begin(), bins.Counts.end(), 0.0), 4);
}

TEST(ScatterMatrices, CountManyPointsOnAGrid) {
    std::vector<double> values(MostScatterPoints + 1);
    std::iota(values.begin(), values.end(), 0.0);
    const DataTable table = TableOf({Numbers("x", values), Numbers("y", values)});
    const PlotRows rows = AllRows(table);
    const ScatterCell cell = ScatterMatrixOf({table, {0, 1}, rows, 0, {}}).Cells[1];
    ASSERT_TRUE(cell.Density.has_value());
    EXPECT_TRUE(cell.Points.empty());
    const std::vector<float>& counts = cell.Density->Counts;
    EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0.0), static_cast<double>(values.size()));
    EXPECT_GT(counts.front(), 0);
    EXPECT_GT(counts.back(), 0);
    EXPECT_EQ(counts[1], 0) << "off the diagonal";
}

TEST(Histograms3D, CountLabelsValuesAndIntervals) {
    std::vector<double> many(30);
    std::iota(many.begin(), many.end(), 1.0);
    many[0] = Missing;
    std::vector<std::optional<std::string>> texts(30, "a");
    texts[1] = "b";
    texts[2] = std::nullopt;
    const DataTable table = TableOf({Texts("t", texts), Numbers("n", many)});
    const Histogram3DPlot plot = Histogram3DOf(table, 0, 1, AllRows(table));
    EXPECT_EQ(plot.X.Labels, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(plot.Y.Labels.front(), "0<x<=5");
    EXPECT_EQ(plot.Y.Labels.size(), 6U);
    EXPECT_EQ(plot.Cases, 28);
    EXPECT_EQ(plot.Counts[0], 2) << "a in (0, 5]: 4 and 5";
    EXPECT_EQ(plot.Counts[1], 1) << "b in (0, 5]: 2";
    EXPECT_EQ(std::accumulate(plot.Counts.begin(), plot.Counts.end(), 0.0), 28);
}

}  // namespace
}  // namespace quillara
