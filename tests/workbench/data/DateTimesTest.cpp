#include "workbench/data/DateTimes.h"

#include "tests/workbench/Tables.h"
#include "workbench/data/Calendar.h"
#include "workbench/data/CalendarCuts.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/DateIntervals.h"
#include "workbench/data/Errors.h"
#include "workbench/data/PeriodName.h"
#include "workbench/data/ValueText.h"

#include <gtest/gtest.h>

namespace quillara {
namespace {

double At(const char* text) {
    return SecondsFromDateTime(text).value();
}

TEST(DateTimes, AreReadAndWritten) {
    struct Case {
        const char* Text = "";
        double Seconds = 0;
        const char* Shown = "";
        ZoneForm Zone = ZoneForm::None;
    };
    // clang-format off
    constexpr Case cases[] = {
        {"1970-01-01T00:00",              0,                   "1970-01-01 00:00:00"},
        {"2024-02-29 23:59:59",           1709251199,          "2024-02-29 23:59:59"},
        {"2024-02-29T24:00:00",           1709251200,          "2024-03-01 00:00:00"},
        {"1969-12-31T23:59:59.5",         -0.5,                "1969-12-31 23:59:59.5"},
        {"2024-02-29 12:00:00.123456",    1709208000.123456,   "2024-02-29 12:00:00.123456"},
        {"2024-02-29 12:00:00,250",       1709208000.25,       "2024-02-29 12:00:00.25"},
        {"1600-02-29T06:00:00",           -11670976800,        "1600-02-29 06:00:00"},
        {"9999-12-31T23:59:59",           253402300799,        "9999-12-31 23:59:59"},
        {"2024-03-01T00:30:00+01:00",     1709249400,          "2024-02-29 23:30:00", ZoneForm::Shifted},
        {"2023-12-31T23:30-0530",         1704085200,          "2024-01-01 05:00:00", ZoneForm::Shifted},
        {"2024-03-01T00:30:00.5+14",      1709202600.5,        "2024-02-29 10:30:00.5", ZoneForm::Shifted},
        {"2024-03-01T00:30:00Z",          1709253000,          "2024-03-01 00:30:00", ZoneForm::Utc},
        {"2024-03-01T00:30:00-00:00",     1709253000,          "2024-03-01 00:30:00", ZoneForm::Utc},
    };
    // clang-format on
    for (const Case& test : cases) {
        const std::optional<WrittenDateTime> read = ReadDateTime(test.Text);
        ASSERT_TRUE(read) << test.Text;
        EXPECT_EQ(read->Seconds, test.Seconds) << test.Text;
        EXPECT_EQ(read->Zone, test.Zone) << test.Text;
        EXPECT_EQ(TextFromDateTime(read->Seconds), test.Shown);
        EXPECT_EQ(At(TextFromDateTime(read->Seconds, 'T').c_str()), test.Seconds);
    }
    for (double seconds = 1709208000; seconds < 1709208060; seconds += 0.7) {
        EXPECT_EQ(At(TextFromDateTime(seconds).c_str()), seconds);
    }
    for (const char* text : {"",
                             "2024-03-01",
                             "2024-03-01T",
                             "2024-03-01 12",
                             "2024-03-01 1:00",
                             "2023-02-29 12:00",
                             "2024-03-01T25:00",
                             "2024-03-01T24:00:01",
                             "2024-03-01T24:00:00.1",
                             "2024-03-01T12:60",
                             "2024-03-01T23:59:60",
                             "2024-03-01t12:00",
                             "2024-03-01T12:00:00.",
                             "2024-03-01T12:00:00z",
                             "2024-03-01T12:00+24:00",
                             "2024-03-01T12:00+01:60",
                             "2024-03-01T12:00+1",
                             "2024-03-01T12:00+01:",
                             "2024-03-01T12:00Z ",
                             "2024-03-01  12:00",
                             "9999-12-31T24:00",
                             "0000-01-01T00:00+01:00"}) {
        EXPECT_FALSE(ReadDateTime(text)) << text;
    }
    EXPECT_EQ(TextFromDateTime(Infinity) + TextFromDateTime(Missing) + TextFromDateTime(1e300), "");
}

TEST(DateTimes, AreNamedAsShortAsTheyCanBe) {
    const struct {
        const char* Name;
        double Lower;
        double Upper;
        const char* Shown;
    } cases[] = {
        {"1<=x<2", At("2024-02-29"), At("2024-03-01"), "2024-02-29"},
        {"1<=x<2", At("2024-02-28"), At("2024-03-01"), "2024-02-28<=x<2024-03-01"},
        {"1<=x<2", At("2024-02-29"), At("2024-02-29 06:00"), "2024-02-29 00:00<=x<2024-02-29 06:00"},
        {"1<x<=2", At("2024-02-29") - 1, At("2024-03-01") - 1, "2024-02-29"},
        {"1<x<=2", At("2024-02-28") - 1, At("2024-03-01") - 1, "2024-02-27 23:59:59<x<=2024-02-29 23:59:59"},
        {"1<x<=2", At("1970-01-01") - 0.001, At("1971-01-01") - 0.001, "1970"},
        {"x<=2", -Infinity, At("1970-01-01") - 0.001, "to 1969-12"},
        {"1<x", At("1970-01-01") - 1, Infinity, "from 1970-01"},
        {"x<=2", -Infinity, At("1969-12-30") - 0.001, "x<=1969-12-29 23:59:59.999"},
        {"1<x<=2", 0.25, 10.5, "1970-01-01 00:00:00<x<=1970-01-01 00:00:10"},
        {"1<=x<2", 0.25, 10.5, "1970-01-01 00:00:01<=x<1970-01-01 00:00:11"},
        {"1<x<=2", 0.25, 0.5, "1970-01-01 00:00:00.25<x<=1970-01-01 00:00:00.5"},
        {"x<=2", -Infinity, At("2024-03-01 12:00"), "x<=2024-03-01 12:00"},
        {"1<x", At("2024-03-01 12:00:01"), Infinity, "2024-03-01 12:00:01<x"},
        {"1.7093e9", 0, 1709208000.0001, "2024-02-29 12:00:00.0001"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(NameInDates(ValueKind::DateTime, test.Name, test.Lower, test.Upper), test.Shown);
    }
    // The name alone has lost digits.
    EXPECT_EQ(NameInDates(ValueKind::DateTime, "1.7e9<x<=1.71e9"), "1.7e9<x<=1.71e9");
    EXPECT_EQ(TextOfValue(ValueKind::DateTime, 1709208000.12345), "2024-02-29 12:00:00.123");
    EXPECT_EQ(TextOfValue(ValueKind::DateTime, 1709208000, 60), "2024-02-29 12:00");
    EXPECT_EQ(TextOfValue(ValueKind::DateTime, At("2024-02-29"), 86400), "2024-02-29");
}

TEST(PeriodName, IsThatOfTheCalendarBothWays) {
    const struct {
        const char* First;
        const char* Behind;
        const char* Name;  // empty: these days have none
    } cases[] = {
        {"2024-01-01", "2025-01-01", "2024"},     {"2024-04-01", "2024-07-01", "2024-Q2"},
        {"2024-02-01", "2024-03-01", "2024-02"},  {"2024-12-30", "2025-01-06", "2025-W01"},
        {"2020-12-28", "2021-01-04", "2020-W53"}, {"2024-02-29", "2024-03-01", "2024-02-29"},
        {"1969-12-29", "1970-01-05", "1970-W01"}, {"2024-01-01", "2024-02-02", ""},
        {"2024-02-02", "2024-03-02", ""},         {"2024-01-02", "2024-01-09", ""},
        {"2024-01-02", "2024-01-02", ""},
    };
    for (const auto& [first, behind, name] : cases) {
        const DayRange days{*DaysFromText(first), *DaysFromText(behind)};
        EXPECT_EQ(NameOfPeriod(days).value_or(""), name) << first;
        const std::optional<DayRange> named = PeriodNamed(name);
        EXPECT_EQ(named.has_value(), *name != '\0') << name;
        if (named) {
            EXPECT_EQ(named->First, days.First) << name;
            EXPECT_EQ(named->Behind, days.Behind) << name;
        }
    }
    for (const char* text : {"2024-Q5", "2024-Q0", "2023-W53", "2024-W00", "2024-13", "24", "2024-1", "x", "2024-W1"}) {
        EXPECT_FALSE(PeriodNamed(text)) << text;
    }
}

TEST(DateTimes, AreCutByTheCalendar) {
    const std::vector<double> values{At("2023-12-31 23:59:59"), At("2024-01-01 00:00"), At("2024-02-29 23:59:59"),
                                     At("2024-03-01 00:00"), Missing};
    const Variable whole = Numbers("t", values, ValueKind::DateTime);
    const CalendarCuts months = CutByCalendar(whole, CalendarPeriod::Month, {});
    EXPECT_EQ(months.Ends,
              (std::vector{At("2023-12-31 23:59:59"), At("2024-01-31 23:59:59"), At("2024-02-29 23:59:59")}));
    std::vector<double> parts = values;
    parts.front() += 0.5;
    EXPECT_EQ(CutByCalendar(Numbers("t", parts, ValueKind::DateTime), CalendarPeriod::Year, {}).Ends,
              std::vector{At("2024-01-01") - 0.001});
    const struct {
        CalendarPeriod Period;
        const char* Start;
        double Step;
    } steps[] = {{CalendarPeriod::Hour, "2023-12-31 23:00", 3600},
                 {CalendarPeriod::Day, "2023-12-31", 86400},
                 {CalendarPeriod::Week, "2023-12-25", 604800}};
    for (const auto& test : steps) {
        const CalendarCuts cuts = CutByCalendar(whole, test.Period, {});
        EXPECT_EQ(cuts.Start, At(test.Start));
        EXPECT_EQ(cuts.Step, test.Step);
    }
    EXPECT_THROW((void)CutByCalendar(Numbers("t", {0, 86400.0 * 100}, ValueKind::DateTime), CalendarPeriod::Hour, {}),
                 DataError);
    EXPECT_THROW((void)CutByCalendar(Numbers("d", {0, 1}, ValueKind::Date), CalendarPeriod::Hour, {}), DataError);
}

TEST(DateTimes, StandInFormulas) {
    DataTable table;
    table.Cases = 4;
    table.Variables = {
        Numbers("t", {At("2024-02-29 23:59:59"), At("2024-03-01 00:00"), At("1969-12-31 06:30"), Missing},
                ValueKind::DateTime),
        Numbers("d", {19782, 19783, -1, 0}, ValueKind::Date)};
    const std::pair<const char*, const char*> cases[] = {
        {"t >= \"2024-03-01\"", "0100"},
        {"t = \"2024-02-29T23:59:59\"", "1000"},
        {"t < \"2024-03-01 00:00+01:00\"", "0010"},
        {"t between \"1969-12-31 06:30\" and \"2024-02-29 23:59:59\"", "1010"},
        {"t in (\"2024-03-01 00:00\", \"1969-12-31 06:30\")", "0110"},
        {"t >= d", "1110"},
        {"t = d", "0100"},
        {"date(t) = d", "1110"},
        {"time(t) > \"06:00:00\"", "1010"},
        {"year(t) = 1969 and hour(t) = 6 and minute(t) = 30", "0010"},
        {"weekday(t) = \"Thursday\" and month(t) = \"February\" and day(t) = 29 and quarter(t) = 1", "1000"},
        {"t + 1 = \"2024-03-01\"", "1000"},
        {"t - \"2024-02-29 23:59:59\" = 1", "0100"},
        {"max(t, \"2000-01-01 00:00\") = \"2000-01-01\"", "0010"},
        {"if(missing(t), \"2020-01-01 12:00\", t) >= \"2020-01-01\"", "1101"},
        {"cut(t, \"2024-01-01 00:00\", \"2024-03-01 00:00\") = \"2024-01-01<x<=2024-03-01\"", "1100"},
    };
    for (const auto& [formula, expected] : cases) {
        std::string chosen;
        for (const CaseResult result : SelectCases(table, formula)) {
            chosen += result == CaseResult::Use ? '1' : '0';
        }
        EXPECT_EQ(chosen, expected) << formula;
    }
    for (const char* refused : {"t > 5", "t = \"noon\"", "t = \"2024-03-01T23:59:60\"", "t - d > 0", "year(5) = 1",
                                "hour(d) = 1", "date(5) = \"2024-01-01\"", "d = \"2024-03-01 12:00\""}) {
        EXPECT_THROW((void)SelectCases(table, refused), UsageError) << refused;
    }
}

}  // namespace
}  // namespace quillara
