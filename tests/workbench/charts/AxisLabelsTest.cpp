#include "workbench/charts/AxisLabels.h"

#include <gtest/gtest.h>
#include <QStringList>

#include "workbench/charts/ChartStyle.h"
#include "workbench/charts/OffscreenApplication.h"

namespace quillara {
namespace {

TextStyle Style() {
    EnsureApplication();
    return StyleOf({}).Text();
}

/// Equal labels at equal distances in a room of 200 pixels' depth, as "how they stand, how many labels".
std::string FormOf(int count, double distance, const QString& text) {
    std::vector<AxisSpot> spots;
    for (int i = 0; i < count; ++i) {
        spots.push_back({200.0 + i * distance, text});
    }
    const AxisLabels labels = LabelsBelow(spots, {0.0, 400.0 + count * distance, 200.0}, Style());
    if (labels.Texts.empty()) {
        return "nothing";
    }
    const double angle = labels.Texts.front().Angle;
    const bool isWrapped = labels.Texts.size() > labels.Ticks.size();
    const char* form = isWrapped ? "wrapped" : angle == 0.0 ? "level" : angle == -45.0 ? "slanted" : "upright";
    return std::string(form) + " " + std::to_string(labels.Ticks.size());
}

TEST(AxisLabels, TakeTheMostReadableFormThatHasRoom) {
    struct Row {
        int Count;
        double Distance;
        const char* Text;
        const char* Form;
    };
    // clang-format off
    const Row rows[] = {
        {0,   100.0, "Divorced",                       "nothing"},
        {1,   100.0, "Divorced",                       "level 1"},
        {5,   100.0, "Divorced",                       "level 5"},
        {5,   100.0, "Married, spouse absent",         "wrapped 5"},
        {5,   120.0, "2024-01-18<x<=2024-02-07",       "wrapped 5"},
        {5,    40.0, "Separated-and-more",             "slanted 5"},
        {20,   16.0, "Separated-and-more",             "upright 20"},
        {100,   8.0, "Separated-and-more",             "upright 50"},
        {100,   8.0, "17",                             "level 20"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_EQ(FormOf(row.Count, row.Distance, QString::fromUtf8(row.Text)), row.Form) << row.Text << row.Distance;
    }
}

TEST(AxisLabels, IntervalsBreakBesideTheirX) {
    const auto joined = [](const QString& text, double width) {
        return WholeWordLines(text, Style(), width).join(u'|').toStdString();
    };
    EXPECT_EQ(joined(QStringLiteral("2024-01-18<x<=2024-02-07"), 120.0), "2024-01-18<x<=|2024-02-07");
    EXPECT_EQ(joined(QStringLiteral("10<=x<20 years"), 300.0), "10<=x<20 years");
    EXPECT_EQ(joined(QStringLiteral("2024-01-18<x<=2024-02-07"), 40.0), "");
}

TEST(AxisLabels, SomeIntervalsAreShownInFullRatherThanAllCut) {
    std::vector<AxisSpot> intervals;
    std::vector<AxisSpot> names;
    for (int i = 0; i < 9; ++i) {
        const double at = 60.0 + i * 40.0;
        intervals.push_back({at, QStringLiteral("%1<x<=%2").arg(i * 1000.5).arg((i + 1) * 1000.5)});
        names.push_back({at, QStringLiteral("Separated %1 times").arg(i)});
    }
    intervals.back().Text = QStringLiteral("Missing");
    const AxisLabels some = LabelsBelow(intervals, {0.0, 440.0, 36.0}, Style());
    EXPECT_EQ(some.Ticks.size(), 5U);
    for (const PlacedText& text : some.Texts) {
        EXPECT_TRUE(text.Whole.isEmpty()) << text.Whole.toStdString();
    }
    EXPECT_EQ(LabelsBelow(names, {0.0, 440.0, 36.0}, Style()).Ticks.size(), 9U);  // nothing tells what one is
}

TEST(AxisLabels, NamesThatBeginAlikeAreCutInTheMiddle) {
    const QString begin = QStringLiteral("Strongly-agree-that-the-government-should-do-more-about-");
    const std::vector<AxisSpot> alike = {{200.0, begin + "roads"}, {230.0, begin + "schools"}, {260.0, "Other"}};
    const std::vector<AxisSpot> unlike = {{200.0, "Roads-" + begin}, {230.0, "Schools-" + begin}};
    for (const auto& labels :
         {LabelsBelow(alike, {0.0, 500.0, 120.0}, Style()), LabelsBeside(alike, {0.0, 500.0, 120.0}, Style())}) {
        EXPECT_TRUE(labels.Texts[0].Text.startsWith("Strongly") && labels.Texts[0].Text.endsWith("roads"));
        EXPECT_TRUE(labels.Texts[1].Text.endsWith("schools"));
        EXPECT_EQ(labels.Texts[1].Whole, alike[1].Text);
    }
    EXPECT_TRUE(LabelsBelow(unlike, {0.0, 500.0, 120.0}, Style()).Texts[1].Text.endsWith(QChar(0x2026)));
}

TEST(AxisLabels, BesideAreThinnedByTheirHeight) {
    std::vector<AxisSpot> spots;
    for (int i = 0; i < 100; ++i) {
        spots.push_back({10.0 + i * 4.0, QStringLiteral("label")});
    }
    EXPECT_EQ(LabelsBeside(spots, {0.0, 420.0, 100.0}, Style()).Texts.size(), 20U);
}

}  // namespace
}  // namespace quillara
