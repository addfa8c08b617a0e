#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>
#include <sstream>

#include "tests/workbench/Tables.h"
#include "workbench/plots/BoxPlots.h"
#include "workbench/plots/Histograms3D.h"
#include "workbench/plots/ScatterMatrices.h"

namespace quillara {
namespace {

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
    const PlotRows rows = AllRows(table);
    for (const Case& each : cases) {
        const BoxPlot plot = BoxPlotOf({table, {each.Variable}, rows, each.Type});
        EXPECT_EQ(InShort(plot.Boxes.at(0)), each.Expected);
    }
}

TEST(OrderStatistics, AreThoseOfTheSortedValues) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> share(-1, 1);
    const std::vector<std::function<double()>> shapes = {
        [&] { return std::exp(share(random)); },
        [&] { return share(random) * std::ldexp(1.0, static_cast<int>(random() % 2000) - 1000); },
        [&] { return 1.0 * (random() % 3) - 1.0; },
        [&] { return random() % 2 == 0 ? 0.0 : -0.0; },
        [&] { return 1.0 + share(random) * 1e-9; },
    };
    for (const auto& shape : shapes) {
        for (const std::size_t count : {1U, 2U, 3U, 10U, 1000U}) {
            std::vector<double> values(count);
            std::ranges::generate(values, shape);
            std::vector<std::size_t> places;
            for (std::size_t place = 0; place < count; place += 1 + place / 3) {
                places.push_back(place);
            }
            const OrderStatistics statistics(values, places);
            std::vector<double> sorted = values;
            std::ranges::sort(sorted);
            std::vector<double> byBits = values;
            SortByBits(byBits);
            EXPECT_EQ(byBits, sorted);
            const auto [low, high] = RangeOf(values);
            EXPECT_TRUE(low == sorted.front() && high == sorted.back());
            for (const std::size_t place : places) {
                const auto [at, next] = statistics.At(place);
                EXPECT_EQ(at, sorted[place]);
                EXPECT_EQ(next, sorted[std::min(place + 1, count - 1)]);
            }
            const NeatBins bins = NeatBinsOver(low, high, 10);
            for (const double value : values) {
                const std::size_t place = bins.PlaceOf(value);
                EXPECT_TRUE(place == 0 || value > bins.UpperBounds[place - 1]);
                EXPECT_TRUE(place + 1 == bins.UpperBounds.size() || value <= bins.UpperBounds[place]);
            }
        }
    }
}

// A weight is a number of equal cases: whole weights give what the cases written out give, weights of 1 what none give.
TEST(BoxPlots, WeightsStandForEqualCases) {
    std::mt19937 random(7);
    for (int trial = 0; trial < 200; ++trial) {
        std::vector<double> values;
        std::vector<double> weights;
        std::vector<double> writtenOut;
        for (int i = 0; i < 12; ++i) {
            values.push_back(static_cast<double>(random() % 40));
            weights.push_back(static_cast<double>(random() % 4));
            writtenOut.insert(writtenOut.end(), static_cast<std::size_t>(weights.back()), values.back());
        }
        writtenOut.push_back(values.emplace_back(3.0));
        weights.push_back(1.0);
        const DataTable weighted = TableOf({Numbers("x", values)});
        const DataTable plain = TableOf({Numbers("x", writtenOut)});
        const PlotRows rows = AllRows(weighted);
        const PlotRows plainRows = AllRows(plain);
        const std::vector<double> ones(writtenOut.size(), 1.0);
        for (const int type : {52, 53, 54, 55}) {
            const auto boxType = static_cast<BoxType>(type);
            BoxStatistics box = BoxPlotOf({weighted, {0}, rows, boxType, {weights, "w"}}).Boxes[0];
            EXPECT_EQ(box.Cases, std::ranges::count_if(weights, [](double weight) { return weight > 0.0; }));
            EXPECT_EQ(box.WeightedCases, static_cast<double>(writtenOut.size()));
            box.Cases = static_cast<std::int64_t>(writtenOut.size());
            const std::string expected = InShort(BoxPlotOf({plain, {0}, plainRows, boxType}).Boxes[0]);
            EXPECT_EQ(InShort(box), expected);
            EXPECT_EQ(InShort(BoxPlotOf({plain, {0}, plainRows, boxType, {ones, "w"}}).Boxes[0]), expected);
        }
    }
}

TEST(BoxPlots, SmallAndUnusableWeights) {
    const DataTable table = TableOf({Numbers("x", {1, 2, 3, 4, 5, 9, 9, 9})});
    const PlotRows rows = AllRows(table);
    const std::vector<double> weights = {.2, .2, .2, .2, .2, 0.0, -1.0, std::nan("")};
    EXPECT_EQ(InShort(BoxPlotOf({table, {0}, rows, BoxType::MedianQuartilesRange, {weights, "w"}}).Boxes[0]),
              "x 5: 1 [2 3 4] 5; |");
    EXPECT_EQ(InShort(BoxPlotOf({table, {0}, rows, BoxType::MeanSDAnd196SD, {weights, "w"}}).Boxes[0]),
              "x 5: -0.099032107 [1.4188612 3 4.5811388] 6.0990321; |");
}

TEST(ScatterMatrices, HoldPairsOfValidCasesAndTheirLine) {
    const DataTable table = TableOf({Numbers("x", {1, 2, 3, 4, Missing}), Numbers("y", {2, 4, 6, Missing, 1}),
                                     Numbers("c", {.1, .1, .1, .1, .1}), Numbers("d", {5, 5, 5, 7, 5})});
    const PlotRows rows = AllRows(table);
    const ScatterMatrix matrix = ScatterMatrixOf({table, {0, 1, 2, 3}, rows, 136, {}});
    ASSERT_EQ(matrix.Cells.size(), 16U);
    const ScatterCell& cell = matrix.Cells[4];  // y against x
    EXPECT_EQ(cell.Cases, 3);
    EXPECT_DOUBLE_EQ(cell.Correlation, 1);
    EXPECT_DOUBLE_EQ(cell.Slope, 2);
    EXPECT_NEAR(cell.Intercept, 0, 1e-12);
    EXPECT_NEAR(cell.LineAtMin, 0.2, 1e-12) << "(2 - 1) / (6 - 1)";
    EXPECT_NEAR(cell.LineAtMax, 1.4, 1e-12) << "(8 - 1) / (6 - 1)";
    EXPECT_DOUBLE_EQ(matrix.Cells[1].Slope, 0.5);
    for (const std::size_t constant : {2U, 6U, 8U, 9U, 7U, 13U}) {  // also d, which is constant where y is valid
        EXPECT_TRUE(std::isnan(matrix.Cells[constant].Correlation) && std::isnan(matrix.Cells[constant].LineAtMin));
    }
    EXPECT_THAT(*matrix.Variables[1].Places,
                testing::Pointwise(testing::NanSensitiveFloatEq(), {0.2F, 0.6F, 1.0F, std::nanf(""), 0.0F}));
    EXPECT_EQ(matrix.Variables[2].Histogram.Counts.size(), 1U);
    for (const ScatterVariable& variable : matrix.Variables) {
        const std::vector<double>& counts = variable.Histogram.Counts;
        EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0.0), static_cast<double>(variable.Cases));
    }
}

TEST(ScatterMatrices, AreTheSameAtEveryMagnitude) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> share;
    std::vector<double> x(100);
    std::vector<double> y(100);
    std::ranges::generate(x, [&] { return share(random); });
    std::ranges::transform(x, y.begin(), [&](double at) { return at + share(random); });
    const auto cellAt = [&](double scaleX, double scaleY, double offset) {
        std::vector<double> farX(x);
        std::vector<double> farY(y);
        std::ranges::for_each(farX, [&](double& value) { value = value * scaleX + offset; });
        std::ranges::for_each(farY, [&](double& value) { value *= scaleY; });
        const DataTable table = TableOf({Numbers("x", farX), Numbers("y", farY)});
        return ScatterMatrixOf({table, {0, 1}, AllRows(table), 0, {}}).Cells[2];
    };
    const ScatterCell usual = cellAt(1, 1, 0);
    const double scales[][3] = {
        {1e300, 1e-300, 0}, {1e-300, 1e-300, 0}, {1e307, 1e307, 0}, {1e-310, 5, 0}, {1e5, 1, 1.7e9}};
    for (const auto& [scaleX, scaleY, offset] : scales) {
        const ScatterCell cell = cellAt(scaleX, scaleY, offset);
        EXPECT_NEAR(cell.Correlation, usual.Correlation, 1e-9) << scaleX;
        EXPECT_NEAR(cell.LineAtMin, usual.LineAtMin, 1e-9) << scaleX;
        EXPECT_NEAR(cell.LineAtMax, usual.LineAtMax, 1e-9) << scaleX;
    }
}

// Deviations are summed from the mean of all cases of a variable, which the cases of a pair may be far from.
TEST(ScatterMatrices, PairsFarFromTheirVariables) {
    constexpr std::size_t count = 70000;
    std::mt19937 random(5);
    std::normal_distribution<double> normal;
    std::vector<double> x(count);
    std::vector<double> y(count);
    for (std::size_t i = 0; i < count; ++i) {
        x[i] = normal(random);
        y[i] = i % 5 == 0 ? Missing : 2.0 * x[i] + normal(random);
    }
    const auto cellOf = [&] {
        const DataTable table = TableOf({Numbers("x", x), Numbers("y", y)});
        return ScatterMatrixOf({table, {0, 1}, AllRows(table), 0, {}}).Cells[2];
    };
    const ScatterCell usual = cellOf();
    EXPECT_NEAR(usual.Correlation, 2.0 / std::sqrt(5.0), 0.01);
    x[0] = 1e9;  // y is missing there
    const ScatterCell cell = cellOf();
    EXPECT_EQ(cell.Cases, static_cast<std::int64_t>(count / 5 * 4));
    EXPECT_NEAR(cell.Correlation, usual.Correlation, 1e-12);
    EXPECT_NEAR(cell.Slope, usual.Slope, 1e-12);
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
