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
    struct Case {
        double XMax, YMax;
        std::int16_t Suppress;
        Names Messages;
    };
    const Case cases[] = {
        {-1, 1, 0, {}}, {1, -1, 0, {}}, {1, 1, 1, {}}, {0, 0, 0, {"Nothing to plot...."}},  // an empty range is one
    };
    for (const Case& each : cases) {
        CChartBuilder chart(Analysis(), 1, 0);
        chart.XMin = chart.YMin = 0;
        chart.XMax = each.XMax;
        chart.YMax = each.YMax;
        chart.Suppress = each.Suppress;
        EXPECT_EQ(chart.Show(ShowAsBars), 1);
        EXPECT_EQ(TakeMessages(), each.Messages);
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

TEST_F(ChartBuilder, CountAxisHasThreeSixOrElevenLabels) {
    const auto axis = [this](double highest) {
        CChartBuilder chart(Analysis(), 1, 1);
        FillCountAxis(chart, highest);
        std::string text = std::to_string(static_cast<int>(chart.YMax)) + ':';
        for (std::int32_t label = 0; label < chart.YScaleCount; ++label) {
            EXPECT_EQ(chart.YScaleValues[label], label * chart.YStep);
            text += std::string(" ") + (chart.YScaleText + std::ptrdiff_t{label} * chart.YScaleWidth);
        }
        return text;
    };
    EXPECT_EQ(axis(0.3), "0: 0 1 2");  // labels run past the end
    EXPECT_EQ(axis(0), "1: 0 1 2");
    EXPECT_EQ(axis(4), "5: 0 1 2 3 4 5");
    EXPECT_EQ(axis(10), "20: 0 2 4 6 8 10 12 14 16 18 20");
    EXPECT_EQ(axis(1e18).substr(0, 33), "2000000000: 0 200000000 400000000");
}

}  // namespace drilltest
