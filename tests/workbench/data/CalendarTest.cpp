#include "workbench/data/Calendar.h"

#include "tests/workbench/Tables.h"

#include <gtest/gtest.h>

namespace quillara {
namespace {

TEST(Calendar, DaysAndTimesReadBackAsWritten) {
    const std::pair<double, const char*> days[] = {
        {0, "1970-01-01"},       {1, "1970-01-02"},       {-1, "1969-12-31"},     {11016, "2000-02-29"},
        {11017, "2000-03-01"},   {-25508, "1900-03-01"},  {-25509, "1900-02-28"}, {-141427, "1582-10-15"},
        {-719162, "0001-01-01"}, {2932896, "9999-12-31"},
    };
    for (const auto& [value, text] : days) {
        EXPECT_EQ(DaysFromText(text), value) << text;
        EXPECT_EQ(TextFromDays(value), text);
    }
    const std::pair<double, const char*> times[] = {
        {0, "00:00:00"},     {59, "00:00:59"},      {3661, "01:01:01"}, {86399, "23:59:59"},
        {86400, "24:00:00"}, {363600, "101:00:00"}, {-1, "-00:00:01"},  {-90061, "-25:01:01"},
    };
    for (const auto& [value, text] : times) {
        EXPECT_EQ(SecondsFromText(text), value) << text;
        EXPECT_EQ(TextFromSeconds(value), text);
    }
}

TEST(Calendar, PartsBelongToTheirDayAndSecond) {
    EXPECT_EQ(TextFromDays(0.99), "1970-01-01");
    EXPECT_EQ(TextFromDays(-0.01), "1969-12-31");
    EXPECT_EQ(TextFromDays(19782, ""), "20240229");
    EXPECT_EQ(TextFromDays(2932897), "10000-01-01");
    EXPECT_EQ(TextFromSeconds(59.999), "00:00:59");
    EXPECT_EQ(TextFromSeconds(-0.5), "00:00:00");
    for (const double value : {Infinity, -Infinity, Missing, 1e300, -1e300}) {
        EXPECT_EQ(TextFromDays(value) + TextFromSeconds(value), "") << value;
    }
}

TEST(Calendar, NoSuchDayOrTime) {
    for (const char* text : {"", "1900-02-29", "2023-02-29", "2024-00-01", "2024-13-01", "2024-04-31", "2024-01-00",
                             "2024-1-01", "24-01-01", "2024/01/01", "2024-01-01 ", " 2024-01-1", "2024-01-+1",
                             "-024-01-01", "20240101", "2024-01-011"}) {
        EXPECT_EQ(DaysFromText(text), std::nullopt) << text;
    }
    for (const char* text : {"", "-", ":", "1:00:00", "01:00", "01:60:00", "01:00:60", "01:00:0x", "01-00-00",
                             "+01:00:00", "01:00:00 ", "9999999999999:00:00"}) {
        EXPECT_EQ(SecondsFromText(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quillara
