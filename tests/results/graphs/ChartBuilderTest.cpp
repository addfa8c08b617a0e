#include "results/graphs/ChartBuilder.h"

#include <cmath>
#include <string>

#include "results/graphs/CountAxis.h"
#include "tests/engine/DrillBench.h"

namespace drilltest {

class ChartBuilder : public testing::Test, public DrillBench {
  protected:
    ChartBuilder() : DrillBench(Road::Columns) { Open({Numbers("x", {1})}); }
};

TEST_F(ChartBuilder, SeriesStartWithColoursThatBeginAgainAndSharedBlankNames) {
    CChartBuilder chart(Analysis(), 301, 3);  // an odd number: the arrays behind it stay aligned
    EXPECT_EQ(chart.SeriesColor[0], 12);
    EXPECT_EQ(chart.SeriesColor[243], 255);
    EXPECT_EQ(chart.SeriesColor[244], 12);
    EXPECT_EQ(chart.SeriesNames[300], chart.NameStore);
    EXPECT_EQ(chart.SeriesWidth[300] + chart.SeriesFlags[300] + chart.PointCounts[300], 0.0);
    EXPECT_EQ(chart.PointLabels[0], chart.PointLabelBlock);
    EXPECT_EQ(chart.PointLabels[300], nullptr);
}

TEST_F(ChartBuilder, PointsStandInTwoRunsAndOnlyValidOnesWidenTheRange) {
    CChartBuilder chart(Analysis(), 2, 3);
    chart.CurrentSeries = 1;
    chart.SetPointX(0, 7);
    chart.SetPointY(0, -2);
    chart.SetPointX(2, NA);
    chart.SetPointX(19, 5);  // room for 20 whatever the capacity
    chart.SetPointX(20, 100);
    chart.SetPointY(-1, 100);
    const double* block = chart.SeriesData[1];
    EXPECT_EQ(block[0], 7);
    EXPECT_EQ(block[3], -2);
    EXPECT_EQ(block[19], 5);
    EXPECT_TRUE(std::isnan(block[1]) && std::isnan(block[2]) && std::isnan(block[39]));
    EXPECT_TRUE(std::isnan(chart.SeriesData[0][0]));
    EXPECT_EQ(chart.XMin, 5);
    EXPECT_EQ(chart.XMax, 7);
    EXPECT_EQ(chart.YMax, -2);
    chart.ClearPoints(1, 3);
    EXPECT_EQ(block[0] + block[3] + block[5], 0);
    EXPECT_TRUE(std::isnan(block[6]));
}

TEST_F(ChartBuilder, TextsAreCutToTheirFieldsAndPaddedWithZeros) {
    CChartBuilder chart(Analysis(), 1, 1);
    const std::string longText(100, 'a');
    chart.SetTitle(0, longText);
    chart.SetTitle(1, "second");
    EXPECT_EQ(std::string(chart.Title), std::string(62, 'a') + "second");
    chart.SetXLabel(longText.c_str());
    EXPECT_EQ(chart.XLabelLength, 79);
    chart.SetXLabel("x");
    EXPECT_EQ(std::string(chart.XLabel, 80), "x" + std::string(79, '\0'));
    ASSERT_EQ(chart.AllocXScale(2), 0);
    chart.SetXScale(0, 1, "first");
    chart.SetXScale(0, 4, "");
    chart.SetXScale(1, 5, longText);
    EXPECT_EQ(std::string(chart.XScaleText, 40), std::string(20, '\0') + std::string(20, 'a'));
    EXPECT_EQ(chart.XScaleValues[1], 5);
    EXPECT_EQ(chart.AllocXScale(-1), 1);
    EXPECT_EQ(chart.XScaleText, nullptr);
}

TEST_F(ChartBuilder, WithoutMemoryHasNoBuffersAndShowsNothing) {
    const std::size_t before = Host().LiveAllocations();
    for (int call = 1; call <= 5; ++call) {
        Host().FailAllocation(call);
        CChartBuilder chart(Analysis(), 2, 3);
        EXPECT_EQ(chart.AllocFailed, 1);
        EXPECT_EQ(Host().LiveAllocations(), before);
        chart.SetPointX(0, 1);
        chart.SetPointLabel(0, "a");
        EXPECT_EQ(chart.Show(ShowScaled) + chart.ShowPie() + chart.ShowStacked(), 3);
    }
    EXPECT_EQ(CChartBuilder(Analysis(), 1, 268435456).AllocFailed, 1);
    EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(ChartBuilder, RefusesSilentlyWithoutARangeAndAloudWithoutPoints) {
    const std::tuple<double, double, std::int16_t, Names> cases[] = {
        {-1, 1, 0, {}}, {1, -1, 0, {}}, {1, 1, 1, {}}, {0, 0, 0, {"Nothing to plot...."}},  // an empty range is one
    };
    for (const auto& [xMax, yMax, suppress, messages] : cases) {
        CChartBuilder chart(Analysis(), 1, 0);
        chart.XMin = chart.YMin = 0;
        chart.XMax = xMax;
        chart.YMax = yMax;
        chart.Suppress = suppress;
        EXPECT_EQ(chart.Show(ShowAsBars), 1);
        EXPECT_EQ(TakeMessages(), messages);
        EXPECT_EQ(chart.Show(ShowAsBars), 1);  // once only
    }
}

TEST_F(ChartBuilder, ARequestToScaleMakesTheRangesRound) {
    for (const unsigned short request : {8, 12}) {
        CChartBuilder chart(Analysis(), 2, 1);
        chart.Suppress = 1;
        chart.SetPointX(0, 1);
        chart.SetPointX(1, 99);
        chart.Show(request);
        EXPECT_EQ(chart.CurrentSeries, request == 8 ? 2 : 0);
        EXPECT_EQ(chart.XMax, request == 8 ? 100 : 99);
    }
}

TEST(NiceAxisMax, IsTheNextNumberAboveTheBarAndEndsSomewhere) {
    const std::pair<std::int32_t, std::vector<double>> cases[] = {
        // top, then the highest bars
        {0, {Moved(0, 16), 0.2, Moved(0.5, -16)}},  // fractions below 0.5 are cut to 0
        {1, {-1, 0, Moved(0, 15), Moved(0.5, -15), 0.5, 0.7, Moved(1, -16)}},
        {2, {Moved(1, -15), 1}},  // a bar this near has reached the number
        {5, {2}},
        {20, {Moved(10, -15), 10}},
        {50, {25}},
        {100, {99.5}},
        {200, {100}},
        {2'000'000'000, {1e9, 1e300, Infinity}},
    };
    for (const auto& [top, bars] : cases) {
        for (const double highest : bars) {
            EXPECT_EQ(NiceAxisMax(highest), top) << highest;
        }
    }
}

}  // namespace drilltest
