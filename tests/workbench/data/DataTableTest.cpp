#include "workbench/data/DataTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "platform/OrderedBits.h"
#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingCodes.h"
#include "workbench/data/VariableIndex.h"

namespace quillara {
namespace {

constexpr double Largest = std::numeric_limits<double>::max();

double CodeFor(std::vector<double> values) {
    return EncodeMissing(values);
}

std::string LabelOrNone(const Variable& variable, double value) {
    const std::string* label = variable.LabelOf(value);
    return label == nullptr ? "none" : *label;
}

TEST(MissingCode, IsTheFirstThatLiesFarBelow) {
    const std::pair<std::vector<double>, double> cases[] = {
        {{}, -9999},
        {{Infinity, -Infinity, Missing}, -9999},
        {{1, 2, 3}, -9999},
        {{-9988, -9988}, -9999},  // the limit is -9998
        {{-9989, -9989}, -99999},  // the limit is -9999 itself
        {{0, 998}, -9999},  // the limit is -9990
        {{0, 998.9}, -99999},  // the limit is -9999 itself
        {{-9999, 5}, -999999},
        {{0, 1e6, Infinity, -Infinity}, -99999999},
        {{-1e16 + 20, -1e16 + 20}, 1 - 1e17},  // 1 - 1e16 is low enough, but nearly equal
        {{-1e307, 1e308}, -Largest},
    };
    for (const auto& [values, code] : cases) {
        EXPECT_EQ(CodeFor(values), code) << testing::PrintToString(values);
    }
    std::vector<double> crowd = {Largest, -Infinity};
    for (std::int64_t i = 0; i < 300'000; ++i) {
        crowd.push_back(FromOrderedBits(OrderedBits(-Largest) + 31L * i + i % 31 - (i > 0 ? 15L : 0L)));
    }
    const double code = CodeFor(crowd);
    EXPECT_TRUE(std::isfinite(code) && std::ranges::none_of(crowd, [&](double x) { return NearlyEqual(x, code); }));
}

TEST(MissingCode, ReplacesNothingButMissingValues) {
    EXPECT_EQ(Numbers("a", {1, Missing, -Infinity, 4}).Values, (std::vector<double>{1, -9999, -Infinity, 4}));
    const Variable texts = Texts("t", {"b", std::nullopt, "\xC3\xA4", "B", "b", "ab"});
    EXPECT_EQ(texts.Texts, (std::vector<std::string>{"B", "ab", "b", "\xC3\xA4"}));  // in the order of their bytes
    EXPECT_EQ(texts.Values, (std::vector<double>{3, -9999, 4, 1, 3, 2}));
    EXPECT_TRUE(texts.IsMissing(FromOrderedBits(OrderedBits(-9999) + 15)));
    EXPECT_FALSE(texts.IsMissing(FromOrderedBits(OrderedBits(-9999) + 16)));
    EXPECT_FALSE(texts.IsMissing(Missing));
}

TEST(Variable, LabelsComeBeforeTextsAndDescriptionsAreNoLabels) {
    Variable number = Numbers("n", {1});
    number.Labels[1].Description = "one";
    EXPECT_FALSE(number.HasLabels());
    number.Labels[1].Label = "1st";
    EXPECT_TRUE(number.HasLabels());
    Variable variable = Texts("t", {"f", "m", "x"});
    variable.Labels = {{1, {"Female", ""}}, {2, {"", "a man"}}};
    EXPECT_EQ(LabelOrNone(variable, 1), "Female");
    EXPECT_EQ(LabelOrNone(variable, 2), "m");
    EXPECT_EQ(variable.DescriptionOf(1), nullptr);
    EXPECT_EQ(*variable.DescriptionOf(2), "a man");
    for (const double value : {0.0, 0.5, 1.5, 4.0, -9999.0, 1e300, Missing, Infinity}) {
        EXPECT_EQ(LabelOrNone(variable, value), "none") << value;
        EXPECT_EQ(variable.DescriptionOf(value), nullptr) << value;
    }
}

TEST(DataTable, NamesAreFoundExactly) {
    const DataTable table = TableOf({Numbers("", {}), Numbers("Age", {}), Numbers("Age", {})});
    const VariableIndex index(table);
    for (const auto& [name, place] : {std::pair("", 0U), {"Age", 1U}}) {
        EXPECT_EQ(table.IndexOf(name), place);
        EXPECT_EQ(index.IndexOf(name), place);
    }
    EXPECT_EQ(table.Find("age"), std::nullopt);
    EXPECT_THROW((void)table.IndexOf("age"), DataError);
    EXPECT_THROW((void)index.IndexOf("age"), DataError);
}

TEST(DataTable, SizeIsWhatAnAnalysisCanNumber) {
    EXPECT_NO_THROW(CheckSize(32766, 2147483646));
    EXPECT_THROW(CheckSize(32767, 0), DataError);
    EXPECT_THROW(CheckSize(1, 2147483647), DataError);
}

TEST(DataTable, CaseNamesAreAsWideAsTheLongestAndRowNames) {
    DataTable table;
    EXPECT_EQ(table.CaseNameWidth(), 0U);
    table.CaseNames = {"a", "case 2", ""};
    EXPECT_EQ(table.CaseNameWidth(), 12U);
    table.CaseNames[2] = "the case 3 of all";
    EXPECT_EQ(table.CaseNameWidth(), 17U);
    table.CaseNames[2] = std::string(219, 'n');
    EXPECT_EQ(table.CaseNameWidth(), 218U);
}

}  // namespace
}  // namespace quillara
