#include "workbench/formats/ForeignTime.h"

#include <gtest/gtest.h>

#include "workbench/data/Calendar.h"

namespace quillara {
namespace {

/// "D 2024-02-29", "C 12:00:00", "-" when the value rules the conversion out, "" when the format shows no time.
std::string Converted(const char* extension, const char* format, double value) {
    const std::optional<ForeignTime> time = ForeignTime::Find(extension, format);
    if (!time) {
        return "";
    }
    const std::optional<double> ours = time->Convert(value);
    const bool isDate = time->Kind() == ValueKind::Date;
    return !ours ? "-" : isDate ? "D " + TextFromDays(*ours) : "C " + TextFromSeconds(*ours);
}

TEST(ForeignTime, ConvertsByTheFormatOfTheFile) {
    struct Case {
        const char* Extension;
        const char* Format;
        double Value;
        const char* Shown;
    };
    constexpr double sav1970 = 12219379200;  // seconds from 1582-10-14 to 1970-01-01
    // clang-format off
    constexpr Case cases[] = {
        {"sav",      "DATE11",          sav1970,               "D 1970-01-01"},
        {"zsav",     "EDATE10",         sav1970 + 86399,       "D 1970-01-01"},
        {"por",      "adate8",          0,                     "D 1582-10-14"},
        {"sav",      "MOYR6",           sav1970 + 31 * 86400,  "D 1970-02-01"},
        {"sav",      "DATETIME22.3",    sav1970 - 86400,       "D 1969-12-31"},
        {"sav",      "DATETIME22.3",    sav1970 + 0.5,         "-"},
        {"sav",      "DATE11",          1e15,                  "-"},
        {"sav",      "DATE11",          -1e300,                "-"},
        {"sav",      "TIME5",           86399,                 "C 23:59:59"},
        {"sav",      "TIME8",           86400,                 "-"},
        {"sav",      "TIME8",           -1,                    "-"},
        {"sav",      "F8.2",            1,                     ""},
        {"sav",      "WKDAY3",          1,                     ""},
        {"sav",      "MONTH3",          1,                     ""},
        {"sav",      "",                1,                     ""},
        {"dta",      "%td",             -1,                    "D 1959-12-31"},
        {"dta",      "%-tdDD/NN/CCYY",  0,                     "D 1960-01-01"},
        {"dta",      "%dD_m_Y",         366,                   "D 1961-01-01"},
        {"dta",      "%tc",             86400000,              "D 1960-01-02"},
        {"dta",      "%tc",             1,                     "-"},
        {"dta",      "%tcHH:MM:SS",     86400000 + 3661000,    "C 01:01:01"},
        {"dta",      "%tcDD_HH:MM",     86400000,              "D 1960-01-02"},
        {"dta",      "%tC",             0,                     ""},
        {"dta",      "%tm",             -1,                    "D 1959-12-01"},
        {"dta",      "%tq",             5,                     "D 1961-04-01"},
        {"dta",      "%th",             -1,                    "D 1959-07-01"},
        {"dta",      "%tw",             53,                    "D 1961-01-08"},
        {"dta",      "%tw",             -1,                    "D 1959-12-24"},
        {"dta",      "%tm",             1e18,                  "-"},
        {"dta",      "%ty",             2024,                  ""},
        {"dta",      "%9.0g",           1,                     ""},
        {"dta",      "%-10s",           1,                     ""},
        {"sas7bdat", "DATE9.",          0,                     "D 1960-01-01"},
        {"xpt",      "YYMMDD10",        21914,                 "D 2019-12-31"},
        {"sas7bdat", "E8601DA",         -3652,                 "D 1950-01-01"},
        {"sas7bdat", "DATETIME20.",     86400,                 "D 1960-01-02"},
        {"sas7bdat", "DATETIME",        86401,                 "-"},
        {"sas7bdat", "DTDATE9",         86401,                 "D 1960-01-02"},
        {"xpt",      "TIME8.2",         61.5,                  "C 00:01:01"},
        {"xpt",      "BEST12",          1,                     ""},
        {"xpt",      "SDATE10",         1,                     ""},
    };
    // clang-format on
    for (const Case& test : cases) {
        EXPECT_EQ(Converted(test.Extension, test.Format, test.Value), test.Shown) << test.Format << " " << test.Value;
    }
}

}  // namespace
}  // namespace quillara
