#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "host/TextFunctions.h"
#include "platform/OrderedBits.h"

namespace {

struct Scaling {
    double Low;
    double High;
    double Step;
};

Scaling Scale(double low, double high, short parts) {
    double step = (high - low) / parts;
    scling_double_QUA(&low, &high, &step, 0, parts);
    return {low, high, step};
}

/// The bounds that an analysis builds, behind the low one.
std::vector<double> Bounds(const Scaling& scaling) {
    std::vector<double> bounds;
    for (double y = scaling.Low + scaling.Step;
         OrderedBits(y) <= OrderedBits(scaling.High) + static_cast<std::int64_t>(BitTolerance) &&
         bounds.size() < 100000;
         y += scaling.Step) {
        bounds.push_back(y);
    }
    return bounds;
}

/// Index of the interval (lower, upper] of a value.
std::size_t IntervalOf(double value, const std::vector<double>& bounds) {
    return static_cast<std::size_t>(std::lower_bound(bounds.begin(), bounds.end(), value) - bounds.begin());
}

void ExpectEnclosed(double low, double high, short parts) {
    const Scaling scaling = Scale(low, high, parts);
    const std::vector<double> bounds = Bounds(scaling);
    ASSERT_TRUE(scaling.Low < low && scaling.High >= high && scaling.Step > 0) << low << " " << high << " " << parts;
    ASSERT_TRUE(std::isfinite(scaling.High));
    ASSERT_FALSE(bounds.empty());
    ASSERT_LT(bounds.size(), 100000U);
    ASSERT_EQ(bounds.back(), scaling.High) << low << " " << high << " " << parts;
}

TEST(AxisScaling, GivesRoundBoundsNearTheNumberOfParts) {
    const struct {
        double Low, High;
        short Parts;
        double NewLow, NewHigh, NewStep;
    } cases[] = {
        {17, 90, 10, 10, 90, 10},  // 8 intervals; steps of 5 would give 15
        {0.5, 9.5, 10, 0, 10, 1},  //
        {1, 10, 10, 0, 10, 1},  // the smallest value isn't on the open edge
        {0, 10, 10, -1, 10, 1},  // 11 intervals
        {0, 100, 0, -10, 100, 10},  // no parts: ten
        {-1, 1, 1, -2, 2, 2},  // a range around zero can't do with one
        {9.99, 10.01, 1, 0, 20, 20},  //
        {999999, 1000001, 2, 999998, 1000002, 2},
        {-90, -17, 10, -100, -10, 10},  // -90 itself would lie on the open edge
        {7, 7, 10, 6.9999999999999805, 7, 2e-14},
    };
    for (const auto& row : cases) {
        const Scaling scaling = Scale(row.Low, row.High, row.Parts);
        EXPECT_DOUBLE_EQ(scaling.Low, row.NewLow) << row.Low << " " << row.High;
        EXPECT_DOUBLE_EQ(scaling.High, row.NewHigh) << row.Low << " " << row.High;
        EXPECT_DOUBLE_EQ(scaling.Step, row.NewStep) << row.Low << " " << row.High;
    }
}

TEST(AxisScaling, ValuesOnRoundBoundsStayBelowThem) {
    for (const double unit : {10.0, 100.0, 1000.0}) {
        const Scaling scaling = Scale(0.1 / unit, 7.3 / unit, 73);
        const std::vector<double> bounds = Bounds(scaling);
        ASSERT_EQ(bounds.size(), 73U);
        for (int tenth = 1; tenth <= 73; ++tenth) {
            EXPECT_EQ(IntervalOf(tenth / (10 * unit), bounds), static_cast<std::size_t>(tenth - 1)) << unit;
        }
    }
}

TEST(AxisScaling, ALargestValueJustAboveARoundBoundIsEnclosed) {
    const double high = 0.1 + 0.2;
    ASSERT_GT(high, 0.3);
    const Scaling scaling = Scale(0.05, high, 3);
    EXPECT_EQ(Bounds(scaling).size(), 3U);
    EXPECT_GE(scaling.High, high);
}

TEST(AxisScaling, EnclosesRandomRanges) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    for (int i = 0; i < 5000; ++i) {
        const double scale = std::pow(10, static_cast<int>(random() % 600) - 300);
        const double low = mantissa(random) * scale;
        const double width = std::fabs(mantissa(random)) * scale * std::pow(10, -static_cast<int>(random() % 14));
        const short parts = static_cast<short>(1 + random() % (i % 50 == 0 ? 999 : 25));
        ExpectEnclosed(low, low + width, parts);
    }
}

TEST(AxisScaling, EnclosesExtremeRanges) {
    constexpr double tiny = std::numeric_limits<double>::denorm_min();
    const struct {
        double Low, High;
    } cases[] = {
        {-1e308, 1e308}, {1e-300, 1e300},     {-1e300, 1e-300}, {1, FromOrderedBits(OrderedBits(1.0) + 16)},
        {5, 5},          {1e15, 1e15 + 1},    {-tiny, tiny},    {1e22, FromOrderedBits(OrderedBits(1e22) + 40)},
        {0, 0},          {2e-310, 2.1e-310},  {-1e-5, 1e250},   {-4, FromOrderedBits(OrderedBits(-4.0) + 17)},
        {-7, -7},        {1e-320, 1.0001e-8}, {0, 1.7e308},     {0, tiny * 16},
    };
    for (const auto& row : cases) {
        for (const short parts : {1, 2, 10, 999, 32767}) {
            ExpectEnclosed(row.Low, row.High, parts);
        }
    }
}

TEST(AxisScaling, RangesAtTheEndOfTheNumbersEnd) {
    constexpr double largest = std::numeric_limits<double>::max();
    const Scaling scaling = Scale(-largest, largest, 10);
    EXPECT_EQ(scaling.Low, -largest);
    EXPECT_EQ(scaling.High, largest);
    EXPECT_EQ(Scale(1, std::numeric_limits<double>::infinity(), 10).Low, 1);
    EXPECT_EQ(Scale(2, 1, 10).High, 1);
}

}  // namespace
