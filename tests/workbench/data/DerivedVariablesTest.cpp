#include "workbench/data/DerivedVariables.h"

#include <gtest/gtest.h>

#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"
#include "workbench/data/ValueText.h"

namespace quillara {
namespace {

/// Four cases, of which the last is missing in all but one variable.
DataTable Sample() {
    DataTable table = TableOf({
        Numbers("x", {-2.5, 0, 25, Missing}),
        Numbers("y", {1, 2, 3, 4}),
        Numbers("sex", {1, 2, 1, Missing}),
        Texts("city", {"Oslo", "Århus", "oslo", std::nullopt}),
        Numbers("day", {-1, 18322, 19782.75, Missing}, ValueKind::Date),  // 1969-12-31, 2020-03-01, 2024-02-29
        Numbers("at", {59, 3600, 86399, Missing}, ValueKind::TimeOfDay),
        Numbers("yes", {1, 0, 1, 0}),
    });
    table.Variables[2].Labels = {{1, {"Female", ""}}, {2, {"Male", ""}}};
    return table;
}

/// The values as people see them, with a dot for what is missing; texts and labels in quotes.
std::string Shown(const Variable& variable) {
    std::string shown;
    for (const double value : variable.Values) {
        const std::string* label = variable.LabelOf(value);
        const std::string text = label == nullptr ? TextOfValue(variable.Kind, value) : '\'' + *label + '\'';
        shown += (shown.empty() ? "" : " ") + (variable.IsMissing(value) ? "." : text);
    }
    return shown;
}

std::string Derived(const std::string& formula, const std::string& name = "new") {
    DataTable table = Sample();
    std::vector<Remark> notices;
    try {
        Derive(table, {name, formula}, notices);
    } catch (const UsageError& error) {
        return std::string("usage: ") + error.what();
    } catch (const DataError& error) {
        return std::string("data: ") + error.what();
    }
    return Shown(table.Variables.back());
}

// clang-format off
constexpr std::pair<const char*, const char*> Formulas[] = {
    // Numbers
    {"x + y * 2",             "-0.5 4 31 ."},          {"y / x",                   "-0.4 . 0.12 ."},
    {"-x",                    "2.5 0 -25 ."},          {"7",                       "7 7 7 7"},
    {"log(x)",                ". . 3.21888 ."},        {"log10(x * 4)",            ". . 2 ."},
    {"exp(x)",                "0.082085 1 7.20049e+10 ."},                       {"sqrt(x)", ". 0 5 ."},
    {"exp(x * 1000)",         "0 1 . ."},              {"abs(x)",                  "2.5 0 25 ."},
    {"round(x)",              "-3 0 25 ."},            {"round(x / 100, 1)",       "0 0 0.3 ."},
    {"round(x * 10, -1)",     "-30 0 250 ."},          {"floor(x) + ceiling(x)",   "-5 0 50 ."},
    {"min(x, y, 2)",          "-2.5 0 2 ."},           {"max(x, y)",               "1 2 25 ."},
    // Conditions
    {"x > -1",                "'no' 'yes' 'yes' ."},   {"missing(x)",              "'no' 'no' 'no' 'yes'"},
    {"not x in (0, 25)",      "'yes' 'no' 'no' ."},    {"y > 3 or x > 0",          "'no' 'no' 'yes' ."},
    // Choices
    {"if(x > 0, y, -y)",      "-1 -2 3 ."},            {"if(missing(x), 0, x)",    "-2.5 0 25 0"},
    {"if(y < 3, y, missing())", "1 2 . ."},            {"if(y < 3, 'low', 'high')", "'low' 'low' 'high' 'high'"},
    {"if(y < 3, city, 'Oslo')", "'Oslo' 'Århus' 'Oslo' 'Oslo'"},                   {"if(y = 1, '', city)", ". 'Århus' 'oslo' ."},
    {"if(y = 1, '2024-01-01', day)", "2024-01-01 2020-03-01 2024-02-29 ."},        {"if(y > 1, sex, sex)", "'Female' 'Male' 'Female' ."},
    {"if(x > 0, y > 1, y > 9)", "'no' 'no' 'yes' ."},
    // Texts and labels
    {"sex",                   "'Female' 'Male' 'Female' ."},                       {"sex + 0",   "1 2 1 ."},
    {"lower(city)",           "'oslo' 'århus' 'oslo' ."},                          {"upper(city)", "'OSLO' 'ÅRHUS' 'OSLO' ."},
    {"length(city)",          "4 5 4 ."},              {"'same'",                  "'same' 'same' 'same' 'same'"},
    {"cut(x, -2.5, 0, 10)",   "'x<=-2.5' '-2.5<x<=0' '10<x' ."},                   {"cut(y, 2)", "'x<=2' 'x<=2' '2<x' '2<x'"},
    {"cut(day, '1970-01-01')", "'x<=1970-01-01' '1970-01-01<x' '1970-01-01<x' ."},
    // Dates and times
    {"year(day)",             "1969 2020 2024 ."},     {"quarter(day)",            "4 1 1 ."},
    {"month(day)",            "'December' 'March' 'February' ."},                  {"day(day)",  "31 1 29 ."},
    {"weekday(day)",          "'Wednesday' 'Sunday' 'Thursday' ."},                {"day + 1",   "1970-01-01 2020-03-02 2024-03-01 ."},
    {"day - '1970-01-01'",    "-1 18322 19782.8 ."},   {"hour(at)",                "0 1 23 ."},
    {"minute(at)",            "0 0 59 ."},             {"at - 9",                  "00:00:50 00:59:51 23:59:50 ."},
    {"max(day, '2021-01-01')", "2021-01-01 2021-01-01 2024-02-29 ."},
    // Errors
    {"x +",                   "usage: The formula of \"new\" can't be read at character 4: expected a number, a variable or a quoted text, found the end of the formula."},
    {"missing()",             "usage: The formula of \"new\" can't be read at character 1: missing() is only of use as a result of if(condition, value, missing())."},
    {"X",                     "data: The formula of \"new\" names a variable \"X\" that the data don't have; did you mean \"x\"? (names are compared exactly; a name that is no plain word stands in [square brackets], a text in \"quotes\")."},
};
// clang-format on

TEST(DerivedVariables, AreWhatTheirFormulaSaysOrWhereItIsWrong) {
    for (const auto& [formula, values] : Formulas) {
        EXPECT_EQ(Derived(formula), values) << formula;
    }
    EXPECT_EQ(Derived("1", "x"), "data: The data have a variable \"x\" already; a derived one takes another name.");
    EXPECT_EQ(Derived("1", ""), "usage: A derived variable has no name; write NAME=FORMULA.");
}

TEST(DerivedVariables, HaveTheirFormulaForALabelAndServeLaterOnes) {
    DataTable table = Sample();
    std::vector<Remark> notices;
    Derive(table, {"double x", "x * 2"}, notices);
    Derive(table, {"far", "[double x] > 10 and city = 'OSLO'"}, notices);
    EXPECT_EQ(table.Variables[7].LongName, "x * 2");
    EXPECT_EQ(Shown(table.Variables[8]), "'no' 'no' 'yes' .");
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].Code, "text-other-case");
}

}  // namespace
}  // namespace quillara
