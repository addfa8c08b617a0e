#include "host/TextFunctions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace {

std::string Real(double value, short width = 8, short size = 14) {
    std::string buffer(40, '#');
    const short length = RealToText(value, NumberFieldText, width, 8, buffer.data(), size);
    EXPECT_EQ(std::strlen(buffer.c_str()), static_cast<std::size_t>(length));
    EXPECT_EQ(buffer.substr(static_cast<std::size_t>(size)), std::string(40 - static_cast<std::size_t>(size), '#'));
    return buffer.c_str();
}

std::string Whole(long value, short width = 8) {
    std::string buffer(40, '#');
    const short length = IntToText(value, 6, width, buffer.data());
    EXPECT_EQ(std::strlen(buffer.c_str()), static_cast<std::size_t>(length));
    return buffer.c_str();
}

TEST(RealToText, WritesTheClosestTextThatFits) {
    const struct {
        double Value;
        const char* Text;
    } cases[] = {
        {0, "0"},
        {-0.0, "0"},
        {9.9e-13, "0"},
        {-1e-12, "-1e-12"},
        {0.5, "0.5"},
        {0.1 + 0.2, "0.3"},
        {-1.0 / 3, "-0.33333"},
        {1.0 / 3, "0.333333"},
        {2.0 / 3, "0.666667"},
        {0.000001, "0.000001"},
        {0.0000012, "1.2e-6"},
        {0.00001234, "1.234e-5"},
        {0.0012345678, "0.001235"},
        {0.00012345678, "1.235e-4"},
        {0.012345678, "0.012346"},
        {100000, "100000"},
        {12345678, "12345678"},
        {-1234567, "-1234567"},
        {-12345678, "-1.235e7"},
        {99999999.5, "1e8"},
        {9999999.96, "10000000"},
        {1234567.89, "1234568"},
        {123456789, "1.2346e8"},
        {1e20, "1e20"},
        {-1.5e300, "-1.5e300"},
        {-1.23e300, "-1.2e300"},
        {std::numeric_limits<double>::max(), "1.8e308"},
        {std::numeric_limits<double>::denorm_min(), "0"},
        {std::numeric_limits<double>::infinity(), "--"},
        {std::numeric_limits<double>::quiet_NaN(), "--"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(Real(row.Value), row.Text) << row.Value;
    }
}

TEST(RealToText, KeepsToItsWidthAndSize) {
    EXPECT_EQ(Real(1.0 / 3, 6), "0.3333");
    EXPECT_EQ(Real(1.0 / 3, 16, 20), "0.33333333333333");
    EXPECT_EQ(Real(1.0 / 3, 17, 20), "0.333333333333333");
    EXPECT_EQ(Real(123456, 8, 6), "1.2e5");
    EXPECT_EQ(Real(-123456, 3), "***");
    EXPECT_EQ(Real(5, 0), "");
    EXPECT_EQ(Real(5, 8, 1), "");
}

/// A text of printf without what can go: zeros at the end behind the point, plus sign and zeros of an exponent.
std::string Shortened(std::string text) {
    const std::size_t mark = text.find('e');
    std::string exponent;
    if (mark != std::string::npos) {
        exponent = "e" + std::to_string(std::stoi(text.substr(mark + 1)));
        text.erase(mark);
    }
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text + exponent;
}

/// How near a text of at most 8 characters can come to a value, over all precisions of both notations.
double SmallestError(double value) {
    double error = std::fabs(value);
    for (int precision = 0; precision <= 8; ++precision) {
        for (const char* format : {"%.*f", "%.*e"}) {
            char buffer[400];
            std::snprintf(buffer, sizeof buffer, format, precision, value);
            if (const std::string text = Shortened(buffer); text.size() <= 8) {
                error = std::min(error, std::fabs(std::strtod(text.c_str(), nullptr) - value));
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

}  // namespace
