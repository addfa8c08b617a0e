#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/workbench/charts/TestGraphs.h"
#include "workbench/charts/BarCounts.h"
#include "workbench/charts/BarVisibility.h"
#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/HeatScale.h"
#include "workbench/charts/HistogramBars.h"
#include "workbench/charts/OffscreenApplication.h"
#include "workbench/charts/StackedLayers.h"

namespace quillara {
namespace {

Names WithMissing(Names names) {
    names.emplace_back("Missing");
    return names;
}

TEST(HistogramBars, ShareAPixelBySteadyNumbersAndKeepMissingApart) {
    Values counts(98001, 1.0);
    counts[500] = 7.0;
    counts.back() = 40.0;
    const GraphDocument graph = Bars(WithMissing(Numbered(98000, "v")), counts, 50);
    const auto& chart = std::get<Histogram>(graph.Content);
    const std::vector<HistogramBar> bars = BarsOf(chart, 800.0);
    ASSERT_EQ(bars.size(), 98000 / 123 + 2U);  // 123 a bar, one for the rest, one for missing data
    EXPECT_EQ(CategoriesABar(chart, 800.0), 123U);
    EXPECT_EQ(bars[4].Height, 7.0);
    EXPECT_EQ(bars[4].Total, 129.0);
    EXPECT_EQ(bars[4].First.toStdString() + "-" + bars[4].Last.toStdString(), "v493-v615");
    EXPECT_TRUE(bars.back().IsMissing);
    EXPECT_EQ(bars.back().Height, 40.0);
    EXPECT_EQ(BarsOf(chart, 1e6).size(), counts.size());
}

TEST(BarCounts, TouchNoBarNoOtherCountAndNoEdge) {
    EnsureApplication();
    std::mt19937 random(7);
    const auto below = [&](int bound) { return std::uniform_int_distribution(0, bound - 1)(random); };
    const QRectF area(50.0, 20.0, 700.0, 400.0);
    for (int trial = 0; trial < 200; ++trial) {
        const int count = 1 + below(trial % 10 == 0 ? 1500 : 60);
        const double pitch = area.width() / (count + 1);
        std::vector<CountedBar> bars;
        for (int i = 0; i < count; ++i) {
            const double height = area.height() * below(101) / 100.0;
            const QRectF place(area.left() + (i + 0.55) * pitch, area.bottom() - height, 0.9 * pitch, height);
            bars.push_back({place, QString::number(below(100000)), QColor(Qt::blue), i + 1 == count});
        }
        const std::vector<PlacedText> texts = CountsOfBars(bars, area, StyleOf({}));
        for (auto text = texts.begin(); text != texts.end(); ++text) {
            const QRectF ground = text->Outline().boundingRect();
            EXPECT_TRUE(area.contains(ground.adjusted(0.5, 0.5, -0.5, -0.5))) << trial;
            EXPECT_TRUE(std::none_of(texts.begin(), text, [&](const auto& other) { return Overlap(other, *text); }));
            EXPECT_LE(std::ranges::count_if(bars, [&](const auto& bar) { return bar.Place.intersects(ground); }), 1);
        }
        EXPECT_FALSE(texts.empty() && pitch > 60.0) << trial;
    }
}

TEST(BarCounts, ThoseThatFitStand) {
    EnsureApplication();
    const auto bar = [](double left, double height, const char* count) {
        return CountedBar{QRectF(left, 300.0 - height, 12.0, height), QString::fromUtf8(count), Qt::blue, false};
    };
    const std::vector<PlacedText> texts = CountsOfBars(
        {bar(20, 50, "12345"), bar(34, 200, "67890"), bar(48, 60, "23456")}, QRectF(0, 0, 200, 300), StyleOf({}));
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts.front().Text.toStdString(), "67890");
}

/// "share name" of each layer from the top; [missing] in brackets.
std::string LayersIn(const std::vector<Values>& shares, double least, bool hasMissing) {
    GraphDocument graph = Stacked({"education"}, shares);
    auto& chart = std::get<StackedPlot>(graph.Content);
    for (std::size_t series = 0; series + 1 < chart.Series.size(); ++series) {
        chart.Series[series].Points[0].Name = std::string(1, static_cast<char>('a' + chart.Series.size() - 2 - series));
    }
    chart.Series.front().Points[0].IsMissing = hasMissing;
    QString text;
    for (const StackedLayer& layer : LayersOf(chart, 0, least)) {
        const QString range = layer.Categories > 1 ? layer.First + u'-' + layer.Last : layer.First;
        text += CountText(layer.Share()) + (layer.IsMissing ? u'[' + range + u']' : range) + u' ';
    }
    return text.toStdString();
}

TEST(StackedLayers, AreNamedAndThinOnesPutTogetherButNotMissing) {
    EXPECT_EQ(LayersIn({{20, 30, 50}}, 1.0, false), "50c 30b 20a ");
    EXPECT_EQ(LayersIn({{20, 0, 80}}, 1.0, false), "80c 20a ");
    EXPECT_EQ(LayersIn({{98, 0.5, 0.5, 0.5, 0.5}}, 1.0, false), "1d-e 1b-c 98a ");
    EXPECT_EQ(LayersIn({{98, 0.5, 0.5, 0.5, 0.5}}, 1.0, true), "0.5[e] 1c-d 0.5b 98a ");
    EXPECT_EQ(LayersIn({Values(2048, 100.0 / 2048)}, 1.0, false).substr(0, 4), "1.03");
}

TEST(HeatScale, NeitherFlattensSmallCountsNorBendsEvenOnes) {
    const HeatScale skewed({0, 1, 50, 40, 60, 100000});
    EXPECT_TRUE(skewed.IsLogarithmic());
    EXPECT_GT(skewed.ShareOf(50), skewed.ShareOf(1) + 0.2);
    EXPECT_GT(skewed.ShareOf(100000), skewed.ShareOf(60) + 0.2);
    const HeatScale even({10, 20, 0, 40});
    EXPECT_FALSE(even.IsLogarithmic());
    EXPECT_NEAR(even.PlaceOf(20), 0.5, 1e-12);
    for (const HeatScale& scale : {skewed, even, HeatScale({3}), HeatScale({0.25, 0.25, 9})}) {
        EXPECT_GT(scale.ShareOf(1e-9), 0.0);
        EXPECT_LE(scale.Marks().size(), 8U);
        EXPECT_FALSE(scale.Marks().empty());
    }
}

/// Counts row by row, the front row first.
CountTable Table(std::size_t columns, const Values& counts) {
    const std::size_t rows = counts.size() / columns;
    return CountTable(Histogram3DPlot{{"x", "", Numbered(static_cast<int>(columns), "c")},
                                      {"y", "", Numbered(static_cast<int>(rows), "r")},
                                      counts,
                                      1});
}

TEST(BarVisibility, ABarBehindAHigherOneIsHidden) {
    EXPECT_FALSE(BarsHideOthers(Table(2, {1, 1, 10, 10})));
    EXPECT_TRUE(BarsHideOthers(Table(2, {10, 10, 1, 1})));
    EXPECT_FALSE(BarsHideOthers(Table(2, {10, 10, 0, 0})));
    EXPECT_FALSE(BarsHideOthers(Table(5, {1, 2, 3, 4, 5})));
    EXPECT_FALSE(BarsHideOthers(Table(2, {0, 0, 0, 0})));
}

TEST(CategoryTexts, SharesNeverReadAsNoneOrAllThatArent) {
    EXPECT_EQ(PercentText(1, 32561), QStringLiteral("<0.1%"));
    EXPECT_EQ(PercentText(32560, 32561), QStringLiteral(">99.9%"));
    EXPECT_EQ(PercentText(0, 5) + PercentText(5, 5) + PercentText(1, 8), QStringLiteral("0.0%100.0%12.5%"));
    EXPECT_EQ(Isolated(QStringLiteral("plain")), QStringLiteral("plain"));
    EXPECT_NE(Isolated(QStringLiteral("\u05D0")), QStringLiteral("\u05D0"));
}

TEST(ChartColors, LayersOfAColumnAndNeighbouringColumnsDiffer) {
    for (const bool isDark : {false, true}) {
        for (int column = 0; column < 12; ++column) {
            for (int place = 0; place < 12; ++place) {
                EXPECT_NE(LayerColor(column, place / 12.0, isDark), LayerColor(column, (place + 1) / 12.0, isDark));
                EXPECT_NE(LayerColor(column, place / 12.0, isDark), LayerColor(column + 1, place / 12.0, isDark));
            }
        }
    }
}

}  // namespace
}  // namespace quillara
