#include "workbench/data/CaseSelection.h"

#include <gtest/gtest.h>

#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

/// Six cases, of which the last is missing in most variables.
DataTable Sample() {
    DataTable table = TableOf({
        Numbers("a", {1, 2, 3, 4, 5, Missing}),
        Numbers("b", {0, 1, 0, 2, -1, 1}),
        Numbers("degree", {1, 2, 3, 1, 2, 3}),
        Texts("sex", {"Female", "Male", "Female", "Male", "say \"x\"", std::nullopt}),
        Numbers("day", {19753, 19754, 19755, 19753, 19754, Missing}, ValueKind::Date),
        Numbers("at", {0, 3600, 7200, 0, 3600, Missing}, ValueKind::TimeOfDay),
        Numbers("marital status]", {1, 1, 1, 2, 2, 2}),
        Numbers("and", {1, 2, 1, 2, 1, 2}),
        Numbers("Missing", {1, 2, Missing, 1, 2, 3}),
        Numbers("Größe.1", {7, 8, 9, 7, 8, 9}),
        Numbers("gap", {1, Missing, 1, Missing, 1, 1}),
    });
    table.Variables[2].Labels = {{1, {"low", ""}}, {2, {"high", ""}}, {3, {"low", ""}}, {9, {"never", ""}}};
    return table;
}

/// The selected cases, as "1 2 3"; else the kind and text of the error.
std::string Selected(const std::string& formula) {
    std::string cases;
    try {
        const std::vector<CaseResult> results = SelectCases(Sample(), formula);
        for (std::size_t i = 0; i < results.size(); ++i) {
            cases += results[i] == CaseResult::Use ? " " + std::to_string(i + 1) : "";
        }
    } catch (const UsageError& error) {
        return std::string("usage: ") + error.what();
    } catch (const DataError& error) {
        return std::string("data: ") + error.what();
    }
    return cases.empty() ? "" : cases.substr(1);
}

// clang-format off
constexpr std::pair<const char*, const char*> Selections[] = {
    // Comparisons
    {"a = 2", "2"},             {"a == 2", "2"},             {"a <> 2", "1 3 4 5"},      {"a!=2", "1 3 4 5"},
    {"a < 2", "1"},             {"a <= 2", "1 2"},           {"a > 4", "5"},             {"a >= 4", "4 5"},
    {"3 < a", "4 5"},           {"a = a", "1 2 3 4 5"},      {"1 = 2", ""},              {"1 = 1", "1 2 3 4 5 6"},
    {"a = 3.0000000000000004", ""},
    // What binds tighter
    {"not a = 2", "1 3 4 5"},               {"NOT not a = 2", "2"},                 {"not a = 2 and a < 4", "1 3"},
    {"not (a = 2 or a < 4)", "4 5"},        {"a = 1 or a = 2 and b = 0", "1"},      {"a = 1 Or not a < 5", "1 5"},
    {"(a = 1 or a = 2) And b = 1", "2"},    {"((a)) = (2)", "2"},                   {"a + 1 * 2 = 4", "2"},
    {"(a + 1) * 2 = 4", "1"},               {"a - 1 - 1 = 1", "3"},                 {"12 / a / 2 = 2", "3"},
    {"-a * 2 < -7", "4 5"},                 {"2 - -a = 4", "2"},                    {"- - a = + 2", "2"},
    {"a*.5=1.", "2"},                       {"a = 2e0", "2"},
    // Labels and texts
    {"sex = \"Female\"", "1 3"},            {"\"Female\" = (sex)", "1 3"},          {"sex <> \"Female\"", "2 4 5"},
    {"sex = \"female\"", "1 3"},             {"sex <> \"nobody\"", "1 2 3 4 5"},     {"sex = \"say \"\"x\"\"\"", "5"},
    {"sex = \"\"", ""},                     {"degree = \"low\"", "1 3 4 6"},        {"degree <> \"low\"", "2 5"},
    {"degree = \"never\"", ""},             {"degree > 1 and degree = \"low\"", "3 6"},
    {"sex = 'Male'", "2 4"},                {"sex = 'say \"x\"'", "5"},             {"sex <> 'it''s'", "1 2 3 4 5"},
    {"sex = sex", "1 2 3 4 5"},             {"lower(sex) = lower('MALE')", "2 4"},
    // Lists and ranges
    {"a in (1, 4, 7)", "1 4"},              {"a not in (1, -2 + 6)", "2 3 5"},      {"not a in (1)", "2 3 4 5"},
    {"sex in ('female', \"say \"\"x\"\"\")", "1 3 5"},                            {"degree in ('high', 1)", "1 2 4 5"},
    {"day in ('2024-01-31')", "1 4"},       {"a between 2 and 3 and b = 0", "3"},   {"a not between 2 and 4", "1 5"},
    {"day between '2024-02-01' and '2024-02-01'", "2 5"},                           {"a between b and 4", "1 2 3 4"},
    {"a In (2) Or b = -1", "2 5"},
    // Choices
    {"if(missing(a), 0, a) < 2", "1 6"},    {"if(a > 2, b > 0, a = 1)", "1 4"},     {"if(b = 0, 1, 1 / 0) = 1", "1 3"},
    {"if(a > 2, day, '2024-01-01') < '2024-01-15'", "1 2"},
    // Dates and times
    {"day - '2024-01-31' = 1", "2 5"},      {"month(day) = 'February'", "2 3 5"},   {"hour(at) >= 1", "2 3 5"},
    {"day >= \"2024-02-01\"", "2 3 5"},     {"\"2024-02-01\" > day", "1 4"},        {"day = \"2024-01-31\"", "1 4"},
    {"day + 1 > 19755", "3"},               {"day - 1 < day and day - at < 19753", "2 3 5"},
    {"day = [day]", "1 2 3 4 5"},               {"at > \"00:59:59\"", "2 3 5"},         {"at = \"01:00:00\"", "2 5"},
    // Missing data
    {"missing(gap)", "2 4"},                {"not Missing ( [gap] )", "1 3 5 6"},   {"missing(a) or b = 1", "2 6"},
    {"b = 1 or a = 2", "2"},                {"not a > 100", "1 2 3 4 5"},           {"missing(sex) and b = 1", "6"},
    // Arithmetic without a result
    {"a / b > 0", "2 4"},                   {"not a / b > 0", "5"},                 {"a / b > 0 or a < 4", "2 4"},
    {"1 / (a / b) < 1", "2 4 5"},           {"b / b <> 1", ""},                     {"a * 1e308 > 0", "1"},
    {"1 / 0 = 1 or a = 1", ""},
    // Names
    {"Missing = 1 or (Missing) > 2", "1 4 6"},  {"missing(Missing)", "3"},          {"not Missing<2", "2 5 6"},
    {"[marital status]]] = 2", "4 5 6"},    {"[and] = 1 AND [a]<4", "1 3"},         {"Größe.1 = 9", "3 6"},
};

/// Formulas and the character where they can't be read.
constexpr std::pair<const char*, int> Unreadables[] = {
    {"", 1},                    {"  ", 3},                      {"a", 1},                   {"a =", 4},
    {"a = 2)", 6},              {"(a = 2", 7},                  {"a = 2 b = 3", 7},         {"a < 2 < 3", 7},
    {"(a < 2) < 3", 1},         {"(a < 2) + 1 = 3", 1},         {"a = not 3", 5},           {"a and b = 1", 1},
    {"b = 1 and a", 11},        {"not a", 5},                   {"and = 1", 1},             {"a = 1 and or b = 1", 11},
    {"a = 1 & b = 1", 7},       {"a = 'x'", 5},                 {"Größe.1 = 9 ?", 13},      {"a = 3x", 6},
    {"a = 1e999", 5},           {"sex = \"Female", 7},          {"[marital status = 2", 1}, {"missing(", 9},    
    {"missing(a + 1)", 11},     {"missing(\"a\")", 9},          {"sex = 1", 1},             {"sex + 1 = 2", 1},
    {"1 < sex", 5},             {"sex < sex", 5},               {"sex < \"Female\"", 5},    {"degree >= \"low\"", 8},
    {"a = \"2\"", 5},           {"\"a\" = \"a\"", 1},           {"a + 1 = \"2\"", 9},       {"a + \"2\" = 1", 5},
    {"day > \"2024-02-30\"", 7},                                {"at > \"1:00\"", 6},
    {"a in 1", 6},              {"a in (b)", 7},            {"a in (1", 8},             {"a in ()", 7},
    {"a between 1", 12},        {"a = 1,5", 6},             {"a in ('x')", 7},          {"day in (3)", 9},
    {"if(a, 1, 2) = 1", 4},     {"if(a = 1, 1) = 1", 1},    {"if(a = 1, 1, 'x') = 1", 14},                  {"lg(a) = 1", 1},
    {"year(a) = 1", 6},         {"length(a) = 1", 8},       {"cut(a, 2, 1) = 1", 11},   {"missing() = 1", 1},
    {"round(a, b) = 1", 10},    {"min(a, day) = 1", 8},     {"abs(a, 1) = 1", 1},       {"a not 1", 3},
    {"day > 2020-01-01", 7},    {"19753 = (day)", 1},           {"a = 1 and at < 3600", 16},
};
// clang-format on

const std::string Unreadable = "usage: The selection formula can't be read at character ";

TEST(CaseSelection, SelectsOrSaysWhereItCannotRead) {
    for (const auto& [formula, cases] : Selections) {
        EXPECT_EQ(Selected(formula), cases) << formula;
    }
    for (const auto& [formula, place] : Unreadables) {
        EXPECT_EQ(Selected(formula).find(Unreadable + std::to_string(place) + ":"), 0U) << formula << "\n"
                                                                                        << Selected(formula);
    }
    EXPECT_EQ(Selected("day = 1"), Unreadable + "7: \"day\" is a date: write the day in quotes, as \"2020-01-01\".");
    EXPECT_EQ(Selected("a = 1 && b = 1"), Unreadable + "7: unknown sign && (write and).");
    EXPECT_EQ(Selected("a = )"), Unreadable + "5: expected a number, a variable or a quoted text, found ).");
    const std::string unknown =
        "data: The selection formula names a variable \"A\" that the data don't have; did you mean \"a\"? (";
    EXPECT_EQ(Selected("A = 1").substr(0, unknown.size()), unknown);
    EXPECT_EQ(Selected("missing(none)").substr(0, 5), "data:");
}

/// The codes and texts of what is noticed.
std::string Noticed(const std::string& formula) {
    std::vector<Remark> notices;
    static_cast<void>(SelectCases(Sample(), formula, &notices));
    std::string texts;
    for (const Remark& notice : notices) {
        texts += notice.Code + ": " + notice.Text + (notice.Code == "text-not-found" ? " " + notice.Advice : "") + "|";
    }
    return texts;
}

TEST(CaseSelection, NoticesTextsThatNoCaseHasAndWhatAnOrLeavesOut) {
    EXPECT_EQ(Noticed("sex = 'Male' or a in (1, 2) or degree = 'LOW'"),
              "text-other-case: No value of \"degree\" is \"LOW\" in these letters; \"low\" is taken for it.|"
              "or-with-missing: 1 case isn't selected for a missing value, though another side of an or of the formula "
              "holds.|");
    EXPECT_EQ(Noticed("sex in ('men', 'Male')"),
              "text-not-found: No value of \"sex\" is \"men\". It has \"Female\", \"Male\", \"say \"x\"\".|");
    EXPECT_EQ(Noticed("sex = 'Mael'"), "text-not-found: No value of \"sex\" is \"Mael\". Near to it: \"Male\".|");
    EXPECT_EQ(Noticed("a = 2 and b = 0 or a = 1 and not missing(gap)"), "");
}

TEST(CaseSelection, EndlessFormulasAreRefusedOrRead) {
    EXPECT_EQ(Selected(std::string(100000, '(') + "a").find(Unreadable), 0U);
    EXPECT_EQ(Selected("a = " + std::string(100000, '-') + "1").find(Unreadable), 0U);
    std::string alternatives = "a = 1";
    std::string sum = "a";
    for (int i = 0; i < 20000; ++i) {
        alternatives += " or a = 2";
        sum += " + a";
    }
    EXPECT_EQ(Selected(alternatives), "1 2");
    EXPECT_EQ(Selected(sum + " > 60003"), "4 5");
}

TEST(CaseSelection, EveryCaseOfALongTableIsDecided) {
    for (const std::size_t cases : {0, 1, 4095, 4096, 4097, 10000}) {
        std::vector<double> values;
        for (std::size_t i = 0; i < cases; ++i) {
            values.push_back(i % 7 == 0 ? Missing : static_cast<double>(i));
        }
        const auto results = SelectCases(TableOf({Numbers("i", values)}), "not i * 2 < 100 and i <> 4096");
        ASSERT_EQ(results.size(), cases);
        for (std::size_t i = 0; i < cases; ++i) {
            ASSERT_EQ(results[i] == CaseResult::Use, i % 7 != 0 && i >= 50 && i != 4096) << i;
        }
    }
}

}  // namespace
}  // namespace quillara
