#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <utility>

#include "tests/workbench/charts/Painted.h"
#include "tests/workbench/charts/TestGraphs.h"
#include "workbench/charts/AxisLabels.h"

namespace quillara {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const Names Educations = {"Bachelors", "Some-college", "Prof-school, any", "Adult <basic> & more", "Missing"};
const Values FiveCounts = {725.0, 4456.0, 3.5, 812.0, 363.0};

struct LayoutCase {
    const char* Name;
    GraphDocument Document;
};

std::vector<LayoutCase> EveryKind() {
    const std::string longName = "the present marital status of the person who was interviewed";
    std::string steps = "N Total: 32561, Selected: 71";
    for (const std::string& name : Numbered(25, "variable number ")) {
        steps += "\n" + name + " = 10<x<=20, a category with a long name";
    }
    const Values many(300, 12.25);
    return {
        {"two bars", Bars({"Female", "Male"}, {10771, 21790}, 50000)},
        {"long labels", Bars(Educations, FiveCounts, 5000)},
        {"300 numbers", Bars(Numbered(300, ""), many, 20)},
        {"300 names", Bars(Numbered(300, "Occupation no. "), many, 20)},
        {"no cases", Bars({"a", "b"}, {0, 0}, 1)},
        {"axis of no length", Bars({"a", "b"}, {0.2, 0.4}, 0)},
        {"long heading", Titled(Bars({"a"}, {1}, 2), {"Histogram of review variable: " + longName + longName})},
        {"long caption", Titled(Bars({"a"}, {1}, 2), {"Heading", steps})},
        {"two slices", Pie({"Female", "Male"}, {10771, 21790})},
        {"long slices", Pie({longName, "b", longName, "c"}, {4, 1, 3, 1})},
        {"tiny slices", Pie(Numbered(12, "Slice "), {1000, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1})},
        {"twenty slices", Pie(Numbered(20, "Category "), Values(20, 3.0))},
        {"300 slices", Pie(Numbered(300, "Occupation no. "), many)},
        {"layers", Stacked({"sex", "race"}, {{40, 60}, {20, 30, 50}})},
        {"forty columns", Stacked(Numbered(40, "variable "), std::vector<Values>(40, Values(50, 2.0)))},
        {"boxes", Boxes(3, BoxType::MedianQuartilesRange)},
        {"forty boxes", Boxes(40, BoxType::MeanSEAndSD)},
        {"one variable", Matrix(1, "x")},
        {"five variables", Matrix(5, "hours-per-week ")},
        {"twenty variables", Matrix(20, "a rather long name ")},
        {"2 x 2", Bars3D({"Female", "Male"}, {"<=50K", ">50K"})},
        {"20 x 20", Bars3D(Numbered(20, "Category "), Numbered(20, longName))},
        {"tiles", Mosaic({"Female", "Male"}, {"<=50K", ">50K", "unknown"})},
        {"40 x 60 tiles", Mosaic(Numbered(40, longName), Numbered(60, longName))},
        {"300 x 2 tiles", Mosaic(Numbered(300, "Occupation no. "), {"a", "b"})},
        {"boxes by group", BoxesBy({"Bachelors", longName, "c"})},
        {"150 boxes by group", BoxesBy(Numbered(150, longName))},
        {"60 x 30", Bars3D(Numbered(60, "Category "), Numbered(30, longName))},
    };
}

TEST(ChartLayout, TextsNeitherOverlapNorLeaveThePicture) {
    for (const LayoutCase& row : EveryKind()) {
        for (const QSize size :
             {QSize(320, 240), QSize(480, 320), QSize(900, 600), QSize(1600, 1000), QSize(480, 900)}) {
            EXPECT_THAT(Painted(row.Document, size).Faults(), IsEmpty()) << row.Name << " at " << size.width();
        }
    }
}

/// Charts of counts as data may bring them: any number of categories, long and short names, any magnitude.
class RandomCharts {
  public:
    explicit RandomCharts(unsigned seed) : Random(seed) {}

    GraphDocument Next() {
        const int kind = Below(4);
        const Names names = RandomNames(kind == 3 ? 25 : Below(6) == 0 ? 2049 : 60);
        switch (kind) {
            case 0:
                return Bars(names, Counts, 1.2 * std::ranges::max(Counts));
            case 1:
                return Pie(names, Counts);
            case 2:
                return RandomStack();
            default:
                return Bars3D(names, RandomNames(25));
        }
    }
    QSize Size() { return {320 + Below(1600), 240 + Below(1000)}; }

  private:
    int Below(int bound) { return std::uniform_int_distribution(0, bound - 1)(Random); }

    Names RandomNames(int most) {
        const int longest = 1 + Below(12);
        const double magnitude = std::pow(10.0, Below(8) - 1);
        Names names(static_cast<std::size_t>(1 + Below(most)));
        Counts.clear();
        for (std::string& name : names) {
            for (int word = Below(longest); word >= 0; --word) {
                name += std::string(static_cast<std::size_t>(1 + Below(14)), static_cast<char>('a' + Below(26))) + " ";
            }
            Counts.push_back(1.0 + magnitude * Below(100));
        }
        names.back() = Below(2) == 0 ? "Missing" : names.back();
        return names;
    }

    GraphDocument RandomStack() {
        std::vector<Values> shares(static_cast<std::size_t>(1 + Below(12)));
        for (Values& column : shares) {
            RandomNames(Below(4) == 0 ? 300 : 12);
            const double total = std::accumulate(Counts.begin(), Counts.end(), 0.0);
            std::ranges::transform(Counts, std::back_inserter(column), [&](double one) { return 100.0 * one / total; });
        }
        GraphDocument graph = Stacked(Numbered(static_cast<int>(shares.size()), "variable "), shares);
        for (GraphSeries& series : std::get<StackedPlot>(graph.Content).Series) {
            for (GraphPoint& point : series.Points) {
                point.Name = RandomNames(1).front();
                point.IsMissing = Below(20) == 0;
            }
        }
        return graph;
    }

    std::mt19937 Random;
    Values Counts;
};

TEST(ChartLayout, NoCountsNamesOrSizesBringTextsTogether) {
    for (unsigned seed = 0; seed < 80; ++seed) {
        RandomCharts charts(seed);
        const GraphDocument graph = charts.Next();
        const QSize size = charts.Size();
        EXPECT_THAT(Painted(graph, size).Faults(), IsEmpty()) << "seed " << seed << " at " << size.width();
    }
}

TEST(ChartLayout, SaysWhatIsShownAndThatNothingIs) {
    Names numbers = Numbered(303, "");
    numbers.emplace_back("Missing");
    Names whole = Educations;
    whole.insert(whole.end(), {"sex = Female", "Number of counts", "3.5"});
    const std::pair<GraphDocument, Names> graphs[] = {
        {Bars(Educations, FiveCounts, 5000), whole},
        {Bars({"a", "b"}, {2179, 1077}, 5000), {"2500"}},  // where the axis ends
        {Bars(numbers, Values(304, 1.0), 2), {"Missing"}},  // of labels that are thinned
        {Boxes(1, BoxType::MedianQuartilesRange),
         {"Median", "25%-75%", "Range without outliers", "Outliers", "Extremes"}},
        {Boxes(1, BoxType::MeanSEAnd196SE), {"Mean", "Mean \u00B1 SE", "Mean \u00B1 1.96*SE"}},
        {BoxesBy({"Bachelors", "Some-college", "none"}),
         {"Bachelors", "n\u00A0=\u00A010", "n\u00A0=\u00A00", "age: Age in years", "education",
          "3 cases without a value of both are left out"}},
        {Mosaic({"Female", "Male"}, {"low", "high"}),
         {"Female", "Male", "low", "high", "Chi-square 2.5", "100.0%", "Percent within education, by its long name"}},
        {Mosaic({"a", "b"}, Numbered(20, "layer ")), {"8 others", "layer 9"}},
        {Mosaic({}, {}), {"No cases"}},
        {BoxesBy({}), {"No cases"}},
        {Bars({"a"}, {0}, 1), {"No cases"}},
        {Bars({}, {}, 1), {"No cases"}},
        {Pie({"a", "b"}, {0, 0}), {"No cases"}},
        {Boxes(0, BoxType::MeanSEAndSD), {"No cases"}},
        {Matrix(0, "x"), {"No variables"}},
        {Bars3D({}, {}), {"No cases"}},
    };
    for (const auto& [graph, texts] : graphs) {
        EXPECT_THAT(Painted(graph).Texts(), testing::IsSupersetOf(texts));
    }
}

TEST(Charts, LowHistogramsLeaveTheirVariableToTheTitle) {
    GraphDocument graph = Bars({"Female", "Male"}, {3, 1}, 5);
    std::get<Histogram>(graph.Content).X.Caption = "only on the axis";
    for (const auto& [size, isThere] : {std::pair(QSize(900, 600), true), std::pair(QSize(300, 180), false)}) {
        EXPECT_EQ(std::ranges::count(Painted(graph, size).Texts(), "only on the axis"), isThere ? 1 : 0);
    }
}

TEST(ChartSpots, BarUnderAPoint) {
    const Painted chart(Bars({"Female", "<other>"}, {3, 1}, 5));
    EXPECT_THAT(chart.Tips(), ElementsAre("Female: 3 (75.0%)", "<other>: 1 (25.0%)"));
    EXPECT_EQ(chart.UnderMark(0), "0/0 Female: 3 (75.0%)");
    EXPECT_EQ(chart.UnderMark(1), "0/1 <other>: 1 (25.0%)");
    EXPECT_EQ(chart.At({1.0, 1.0}), "nothing");
}

TEST(ChartSpots, LayersLieBetweenNeighbouringSeries) {
    const Painted chart(Stacked({"sex", "race"}, {{40, 60}, {20, 30, 50}}));
    EXPECT_THAT(chart.Tips(), ElementsAre("sex: 60.0%", "sex: 40.0%", "race: 50.0%", "race: 30.0%", "race: 20.0%"));
    EXPECT_EQ(chart.UnderMark(1), "1/0 sex: 40.0%");
}

TEST(ChartSpots, SlicesLeaveOutTheEmptyPointAndGatherSmallOnes) {
    EXPECT_THAT(Painted(Pie({"a", "b"}, {1, 3})).Tips(), ElementsAre("a: 1 (25.0%)", "b: 3 (75.0%)"));
    Values counts(300, 1.0);
    counts[7] = 100.0;
    const auto tips = Painted(Pie(Numbered(300, "n"), counts)).Tips();
    EXPECT_THAT(tips, Contains("n8: 100 (25.1%)"));
    EXPECT_THAT(tips, Contains(testing::StartsWith("Other (")));
    EXPECT_LT(tips.size(), 100U);
}

TEST(ChartSpots, TilesAreSharesOfTheirColumns) {
    EXPECT_THAT(Painted(Mosaic({"a", "b"}, {"c", "d"})).Tips(),
                ElementsAre("a, d: 700 (100.0%)", "b, c: 28 (68.3%)", "b, d: 13 (31.7%)"));
}

TEST(AxisLabels, OfTheWidestColumnsWhereAllHaveNoRoom) {
    std::vector<AxisSpot> spots;
    for (int i = 0; i < 10; ++i) {
        spots.push_back({i * 5.0, QString::number(i), false, i == 4 ? 9.0 : static_cast<double>(i)});
    }
    std::string kept;
    for (const AxisSpot& spot : LargestApart(spots, 11.0)) {
        kept += spot.Text.toStdString();
    }
    EXPECT_EQ(kept, "149");
}

TEST(StackedPlots, LayersTooThinForTheirNamesAreNamedInTheKey) {
    GraphDocument graph = Stacked({"sex", "race"}, {{40, 60}, {0.2, 1.3, 98.5}});
    const Names names[] = {{"Male", "White"}, {"Female", "Black"}, {"", "Other"}};
    auto& series = std::get<StackedPlot>(graph.Content).Series;
    for (std::size_t layer = 0; layer < 3; ++layer) {
        for (std::size_t column = 0; column < 2; ++column) {
            series[layer].Points[column].Name = names[layer][column];
        }
    }
    EXPECT_THAT(Painted(graph).Texts(),
                testing::IsSupersetOf({"Male: 60.0%", "White: 98.5%", "race:", "Black: 1.3%", "Other: 0.2%"}));
    EXPECT_THAT(Painted(graph).Texts(), testing::Not(Contains("sex:")));
}

TEST(ChartSpots, ForemostBarOfA3DHistogramIsFound) {
    const Painted chart(Bars3D({"a", "b"}, {"c"}));
    EXPECT_EQ(chart.UnderMark(2), "-1/1 b, c: 7 (100.0%)");
}

}  // namespace
}  // namespace quillara
