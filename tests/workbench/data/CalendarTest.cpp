#include "workbench/data/Calendar.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillara {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(CalendarTest, DaysAreCountedFrom1970) {
    const struct {
        const char* Text;
        double Days;
    } cases[] = {
        {"1970-01-01", 0},       {"1970-01-02", 1},       {"1969-12-31", -1},     {"2000-02-29", 11016},
        {"2000-03-01", 11017},   {"1900-03-01", -25508},  {"1900-02-28", -25509}, {"1582-10-15", -141427},
        {"0001-01-01", -719162}, {"9999-12-31", 2932896},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(DaysFromText(row.Text), row.Days) << row.Text;
        EXPECT_EQ(TextFromDays(row.Days), row.Text);
    }
}

TEST(CalendarTest, NoSuchDay) {
    for (const char* text : {"", "1900-02-29", "2023-02-29", "2024-00-01", "2024-13-01", "2024-04-31", "2024-01-00",
                             "2024-1-01", "24-01-01", "2024/01/01", "2024-01-01 ", " 2024-01-1", "2024-01-+1",
                             "-024-01-01", "20240101", "2024-01-011"}) {
        EXPECT_EQ(DaysFromText(text), std::nullopt) << text;
    }
}

TEST(CalendarTest, PartsOfADayBelongToTheirDay) {
    EXPECT_EQ(TextFromDays(0.99), "1970-01-01");
    EXPECT_EQ(TextFromDays(-0.01), "1969-12-31");
    EXPECT_EQ(TextFromDays(19782, ""), "20240229");
}

TEST(CalendarTest, WhatIsNoDayOrTimeHasNoText) {
    for (const double value : {Infinity, -Infinity, std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300}) {
        EXPECT_EQ(TextFromDays(value), "") << value;
        EXPECT_EQ(TextFromSeconds(value), "") << value;
    }
    EXPECT_EQ(TextFromDays(2932897), "10000-01-01");
}

TEST(CalendarTest, TimesReadBackAsWritten) {
    const struct {
        double Seconds;
        const char* Text;
    } cases[] = {
        {0, "00:00:00"},     {59, "00:00:59"},      {3661, "01:01:01"}, {86399, "23:59:59"},
        {86400, "24:00:00"}, {363600, "101:00:00"}, {-1, "-00:00:01"},  {-90061, "-25:01:01"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(TextFromSeconds(row.Seconds), row.Text);
        EXPECT_EQ(SecondsFromText(row.Text), row.Seconds) << row.Text;
    }
    EXPECT_EQ(TextFromSeconds(59.999), "00:00:59");
    EXPECT_EQ(TextFromSeconds(-0.5), "00:00:00");
}

TEST(CalendarTest, NoSuchTime) {
    for (const char* text : {"", "-", ":", "1:00:00", "01:00", "01:60:00", "01:00:60", "01:00:0x", "01-00-00",
                             "+01:00:00", "01:00:00 ", "9999999999999:00:00"}) {
        EXPECT_EQ(SecondsFromText(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quillara
