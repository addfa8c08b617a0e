#include "host/TextFunctions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "platform/OrderedBits.h"

namespace {

using Limits = std::numeric_limits<double>;

std::string Real(double value, short width = 8, short size = 14) {
    std::string buffer(40, '#');
    const short length = RealToText(value, NumberFieldText, width, 8, buffer.data(), size);
    EXPECT_EQ(std::strlen(buffer.c_str()), static_cast<std::size_t>(length));
    EXPECT_EQ(buffer.find_first_not_of('#', static_cast<std::size_t>(size)), std::string::npos);
    return buffer.c_str();
}

std::string Whole(long value) {
    char buffer[40] = "";
    const short length = IntToText(value, 6, 8, buffer);
    EXPECT_EQ(std::strlen(buffer), static_cast<std::size_t>(length));
    return buffer;
}

// clang-format off
TEST(RealToText, WritesTheClosestTextThatFits) {
    const std::pair<double, const char*> cases[] = {
        {0, "0"},                         {-0.0, "0"},                      {9.9e-13, "0"},
        {-1e-12, "-1e-12"},               {0.5, "0.5"},                     {0.1 + 0.2, "0.3"},
        {-1.0 / 3, "-0.33333"},           {1.0 / 3, "0.333333"},            {2.0 / 3, "0.666667"},
        {0.000001, "0.000001"},           {0.0000012, "1.2e-6"},            {0.00001234, "1.234e-5"},
        {0.0012345678, "0.001235"},       {0.00012345678, "1.235e-4"},      {0.012345678, "0.012346"},
        {100000, "100000"},               {12345678, "12345678"},           {-1234567, "-1234567"},
        {-12345678, "-1.235e7"},          {99999999.5, "1e8"},              {9999999.96, "10000000"},
        {1234567.89, "1234568"},          {123456789, "1.2346e8"},          {1e20, "1e20"},
        {-1.5e300, "-1.5e300"},           {-1.23e300, "-1.2e300"},          {Limits::max(), "1.8e308"},
        {Limits::denorm_min(), "0"},      {Limits::infinity(), "--"},       {Limits::quiet_NaN(), "--"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(Real(value), text) << value;
    }
}
// clang-format on

TEST(RealToText, KeepsToItsWidthAndSize) {
    EXPECT_EQ(Real(1.0 / 3, 6), "0.3333");
    EXPECT_EQ(Real(1.0 / 3, 16, 20), "0.33333333333333");
    EXPECT_EQ(Real(1.0 / 3, 17, 20), "0.333333333333333");
    EXPECT_EQ(Real(123456, 8, 6), "1.2e5");
    EXPECT_EQ(Real(-123456, 3), "***");
    EXPECT_EQ(Real(5, 0) + Real(5, 8, 1), "");
}

/// How near a text of at most 8 characters can come to a value, over all precisions of both notations.
double SmallestError(double value) {
    double error = std::fabs(value);
    for (int precision = 0; precision <= 8; ++precision) {
        for (const char* format : {"%.*f", "%.*e"}) {
            char text[400];
            std::snprintf(text, sizeof text, format, precision, value);
            if (char* exponent = std::strchr(text, 'e')) {
                std::strcpy(exponent + 1, std::to_string(std::atoi(exponent + 1)).c_str());
            }
            if (std::strlen(text) <= 8) {
                error = std::min(error, std::fabs(std::strtod(text, nullptr) - value));
            }
        }
    }
    return error;
}

TEST(RealToText, ComesAsNearAsAnyTextThatFits) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(random) * std::pow(10, static_cast<int>(random() % 30) - 10);
        const std::string text = Real(value);
        ASSERT_LE(text.size(), 8U);
        const double tolerance = std::fabs(value) < 1e-12 ? 1e-12 : std::fabs(value) * 1e-14;
        ASSERT_LE(std::fabs(std::strtod(text.c_str(), nullptr) - value), SmallestError(value) + tolerance) << text;
    }
}

TEST(IntToText, WritesDigitsWhereTheyFit) {
    EXPECT_EQ(Whole(-1234567), "-1234567");
    EXPECT_EQ(Whole(123456789), "1.2346e8");
    EXPECT_EQ(Whole(std::numeric_limits<long>::min()), "-9.22e18");
}

constexpr double Largest = Limits::max();
constexpr double Smallest = Limits::denorm_min();

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

double Later(double value, std::int64_t steps) {
    return FromOrderedBits(OrderedBits(value) + steps);
}

/// The bounds that an analysis builds, behind the low one.
std::vector<double> Bounds(const Scaling& scaling) {
    std::vector<double> bounds;
    const double end = Later(scaling.High, static_cast<std::int64_t>(BitTolerance));
    for (double y = scaling.Low + scaling.Step; y <= end && bounds.size() < 100000; y += scaling.Step) {
        bounds.push_back(y);
    }
    return bounds;
}

void ExpectEnclosed(double low, double high, short parts) {
    const Scaling scaling = Scale(low, high, parts);
    const std::vector<double> bounds = Bounds(scaling);
    ASSERT_TRUE(scaling.Low < low && scaling.High >= high && scaling.Step > 0) << low << " " << high << " " << parts;
    ASSERT_TRUE(std::isfinite(scaling.High) && !bounds.empty() && bounds.size() < 100000U);
    ASSERT_EQ(bounds.back(), scaling.High) << low << " " << high << " " << parts;
}

TEST(AxisScaling, GivesRoundBoundsNearTheNumberOfParts) {
    const struct {
        double Low, High;
        short Parts;
        Scaling Round;
    } cases[] = {
        {17, 90, 10, {10, 90, 10}},  // 8 intervals; steps of 5 would give 15
        {0.5, 9.5, 10, {0, 10, 1}},
        {1, 10, 10, {0, 10, 1}},  // the smallest value isn't on the open edge
        {0, 10, 10, {-1, 10, 1}},  // 11 intervals
        {0, 100, 0, {-10, 100, 10}},  // no parts: ten
        {-1, 1, 1, {-2, 2, 2}},  // a range around zero can't do with one
        {9.99, 10.01, 1, {0, 20, 20}},
        {999999, 1000001, 2, {999998, 1000002, 2}},
        {-90, -17, 10, {-100, -10, 10}},  // -90 itself would lie on the open edge
        {7, 7, 10, {6.9999999999999805, 7, 2e-14}},
    };
    for (const auto& row : cases) {
        const Scaling scaling = Scale(row.Low, row.High, row.Parts);
        EXPECT_DOUBLE_EQ(scaling.Low, row.Round.Low) << row.Low << " " << row.High;
        EXPECT_DOUBLE_EQ(scaling.High, row.Round.High) << row.Low << " " << row.High;
        EXPECT_DOUBLE_EQ(scaling.Step, row.Round.Step) << row.Low << " " << row.High;
    }
}

TEST(AxisScaling, ValuesOnRoundBoundsStayBelowThem) {
    for (const double unit : {10.0, 100.0, 1000.0}) {
        const std::vector<double> bounds = Bounds(Scale(0.1 / unit, 7.3 / unit, 73));
        ASSERT_EQ(bounds.size(), 73U);
        for (int tenth = 1; tenth <= 73; ++tenth) {
            const auto upper = std::lower_bound(bounds.begin(), bounds.end(), tenth / (10 * unit));
            EXPECT_EQ(upper - bounds.begin(), tenth - 1) << unit;
        }
    }
    ExpectEnclosed(0.05, 0.1 + 0.2, 3);  // the largest value lies just above a round bound
    EXPECT_EQ(Bounds(Scale(0.05, 0.1 + 0.2, 3)).size(), 3U);
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
    const std::pair<double, double> ranges[] = {
        {-1e308, 1e308}, {1e-300, 1e300},     {-1e300, 1e-300},      {1, Later(1, 16)},
        {5, 5},          {1e15, 1e15 + 1},    {-Smallest, Smallest}, {1e22, Later(1e22, 40)},
        {0, 0},          {2e-310, 2.1e-310},  {-1e-5, 1e250},        {-4, Later(-4, 17)},
        {-7, -7},        {1e-320, 1.0001e-8}, {0, 1.7e308},          {0, Smallest * 16},
    };
    for (const auto& [low, high] : ranges) {
        for (const short parts : {1, 2, 10, 999, 32767}) {
            ExpectEnclosed(low, high, parts);
        }
    }
}

TEST(AxisScaling, RangesAtTheEndOfTheNumbersEnd) {
    EXPECT_EQ(Scale(-Largest, Largest, 10).Low, -Largest);
    EXPECT_EQ(Scale(-Largest, Largest, 10).High, Largest);
    EXPECT_EQ(Scale(1, Limits::infinity(), 10).Low, 1);
    EXPECT_EQ(Scale(2, 1, 10).High, 1);
}

}  // namespace
