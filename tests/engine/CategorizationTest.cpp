// How each method cuts a range into categories.

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "tests/engine/DrillBench.h"

namespace drilltest {

namespace {

struct Cut {
    std::int32_t Method;
    double Min;
    double Max;
    double Parameter;  ///< ExactCount, NeatCount or StepSize
    std::vector<double> Bounds;  ///< Method 3: StepStart; Method 5: the boundaries
    const char* Categories;
};

Drill Prepared(const Cut& cut) {
    Drill record(1, ContinuousVariable, 0, "x");
    record.Method = cut.Method;
    record.Min = cut.Min;
    record.Max = cut.Max;
    record.ExactCount = record.NeatCount = static_cast<std::int32_t>(cut.Parameter);
    record.StepSize = cut.Parameter;
    record.StartAtMin = cut.Bounds.empty() ? 1 : 0;
    record.StepStart = cut.Bounds.empty() ? 0.0 : cut.Bounds.front();
    record.NU = static_cast<std::int32_t>(cut.Bounds.size());
    std::copy(cut.Bounds.begin(), cut.Bounds.end(), record.UserInterv.begin());
    record.CategorySet = {{0, 3.0, 7.0, "old", 7.0}};
    return record;
}

/// "lower..upper name, ..."
std::string CutText(const Drill& record) {
    std::ostringstream text;
    for (const Categories& category : record.CategorySet) {
        text << (text.tellp() > 0 ? ", " : "") << category.Lower << ".." << category.Upper << ' ' << category.Name;
    }
    return text.str();
}

constexpr double NoMin = 1.7e+308;
constexpr double NoMax = -1.7e+308;

// clang-format off
const Cut Cuts[] = {
    // Method            Min    Max           Parameter Bounds   Categories
    {DistinctValues,     0,     10,           1,        {},      ""},
    {IntegerCategories,  0,     10,           1,        {},      ""},
    {ExactIntervals,     0,     10,           3,        {},      "-2.5..2.5 -2.5<x<=2.5, 2.5..7.5 2.5<x<=7.5, 7.5..12.5 7.5<x<=12.5"},
    {ExactIntervals,     0,     10,           1,        {},      ""},
    {ExactIntervals,     0,     10,           0,        {},      ""},
    {ExactIntervals,     5,     5,            3,        {},      "4..5 x=5"},
    {ExactIntervals,     NoMin, NoMax,        3,        {},      ""},
    {NeatIntervals,      1,     10,           3,        {},      "0..5 0<x<=5, 5..10 5<x<=10"},
    {NeatIntervals,      0.1,   0.25,         3,        {},      "0..0.1 0<x<=0.1, 0.1..0.2 0.1<x<=0.2, 0.2..0.3 0.2<x<=0.3"},
    {NeatIntervals,      5,     Moved(5, 15), 3,        {},      "4..5 x=5"},
    {NeatIntervals,      0.5,   0.5,          3,        {},      "-0.5..0.5 x=0.5"},
    {NeatIntervals,      NoMin, NoMax,        3,        {},      ""},
    {StepIntervals,      0,     8,            4,        {},      "0..4 0<=x<4, 4..8 4<=x<8, 8..12 8<=x<12"},
    {StepIntervals,      0,     8,            4,        {-2},    "-2..2 -2<=x<2, 2..6 2<=x<6, 6..10 6<=x<10"},
    {StepIntervals,      0,     8,            4,        {9},     ""},
    {StepIntervals,      0,     8,            0,        {},      ""},
    {StepIntervals,      0,     8,            -1,       {},      ""},
    {StepIntervals,      1e17,  2e17,         1,        {},      ""},
    {StepIntervals,      5,     5,            4,        {},      "5..5 5"},
    {StepIntervals,      NoMin, NoMax,        4,        {},      ""},
    {UserIntervals,      0,     10,           0,        {2, 6},  "-2..2 x<=2, 2..6 2<x<=6, 6..12 6<x"},
    {UserIntervals,      0,     10,           0,        {5},     "0..5 x<=5, 5..10 5<x"},
    {UserIntervals,      0,     10,           0,        {0.5, 9.5}, "-4.5..0.5 x<=0.5, 0.5..9.5 0.5<x<=9.5, 9.5..14.5 9.5<x"},
    {UserIntervals,      NoMin, NoMax,        0,        {2, 6},  "0..2 x<=2, 2..6 2<x<=6, 6..8 6<x"},
    {UserIntervals,      0,     10,           0,        {},      "7..7 old"},
    {9,                  0,     10,           3,        {},      "7..7 old"},
};
// clang-format on

}  // namespace

TEST(Categorization, CutsTheRange) {
    for (const Cut& cut : Cuts) {
        Drill record = Prepared(cut);
        EXPECT_EQ(record.RebuildCategories(), 1);
        EXPECT_EQ(CutText(record), cut.Categories) << "method " << cut.Method << ", " << cut.Min << " to " << cut.Max;
        for (const Categories& category : record.CategorySet) {
            const bool kept = category.Name == "old";
            EXPECT_EQ(category.Kind, kept ? 0 : 1);
            EXPECT_EQ(category.Count, kept ? 3.0 : cut.Method == UserIntervals ? 1.0 : 0.0) << cut.Categories;
        }
    }
}

TEST(Categorization, TellsWhyNothingWasBuilt) {
    Drill empty = Prepared({ExactIntervals, NoMin, NoMax, 3, {}, ""});
    EXPECT_EQ(empty.MakeExactCategories() + empty.MakeNeatCategories() + empty.MakeUserCategories(), 0);
    EXPECT_EQ(empty.MakeStepCategories(), 1);
    EXPECT_EQ(Prepared({ExactIntervals, 0, 10, 0, {}, ""}).MakeExactCategories(), -1);
}

TEST(Categorization, IntervalsAreContiguousAndHoldTheWholeRange) {
    // Bounds are built by addition; the last interval closes although rounding may leave it a little above its end.
    std::mt19937_64 random(1);
    for (int i = 0; i < 6000; ++i) {
        const std::int32_t method = i % 2 == 0 ? NeatIntervals : ExactIntervals;
        const double scale = std::pow(10.0, static_cast<double>(random() % 581) - 290.0);
        const double min = (static_cast<double>(random() % 2000) - 1000.0) * scale / (1.0 + random() % 7);
        const double max = min + static_cast<double>(1 + random() % 3000) * scale / (1.0 + random() % 11);
        const double count = 2.0 + static_cast<double>(random() % 998);
        Drill record = Prepared({method, min, max, count, {}, ""});
        record.RebuildCategories();
        ASSERT_FALSE(record.CategorySet.empty()) << min << ' ' << max;
        ASSERT_TRUE(method == NeatIntervals || static_cast<double>(record.CategorySet.size()) == count) << min << max;
        ASSERT_LT(record.CategorySet.begin()->Lower, min);
        ASSERT_GE(record.CategorySet.rbegin()->Upper, max);
        double lower = record.CategorySet.begin()->Lower;
        for (const Categories& category : record.CategorySet) {
            ASSERT_EQ(std::exchange(lower, category.Upper), category.Lower);
        }
    }
}

TEST(Categorization, EndsBehindAMillionIntervals) {
    Drill record = Prepared({StepIntervals, 0, 1e6, 0.5, {}, ""});
    record.RebuildCategories();
    EXPECT_EQ(record.CategorySet.size(), 1'000'000U);
}

class Intervals : public DrillTest {};
ON_EVERY_ROAD(Intervals);

TEST_P(Intervals, OfDrillsAndReviewsAreBuiltByDifferentRules) {
    Open({Numbers("x", {0, 4, 8})});
    Choose({}, {"x"});
    Review({}, {"x"});
    for (const CDrillDown::DrillSet* set : {Analysis().DrillDowns, Analysis().Reviews}) {
        RecordIn(*set, "x").Method = StepIntervals;
        RecordIn(*set, "x").StepSize = 8;
        RecordIn(*set, "x").NeatCount = 2;
    }
    const auto texts = [this] { return CutText(Record("x")) + " | " + CutText(RecordIn(*Analysis().Reviews, "x")); };
    constexpr char neat[] = "-10..0 -10<x<=0, 0..10 0<x<=10";
    constexpr char stepped[] = "0..8 0<=x<8, 8..16 8<=x<16";
    Analysis().SetContinuousIntervals();
    Analysis().SetReviewsIntervals();
    EXPECT_EQ(texts(), std::string(stepped) + " | " + stepped);
    Analysis().SetNeatIntervals();
    EXPECT_EQ(texts(), std::string(neat) + " | " + stepped);
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(texts(), std::string(stepped) + " | " + neat);
}

}  // namespace drilltest
