#include "workbench/data/DataTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/OrderedBits.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double Largest = std::numeric_limits<double>::max();

double CodeFor(std::vector<double> values) {
    return EncodeMissing(values);
}

std::string LabelOrNone(const Variable& variable, double value) {
    const std::string* label = variable.LabelOf(value);
    return label == nullptr ? "none" : *label;
}

std::string RefusalOf(const DataTable& table, const std::string& name) {
    try {
        static_cast<void>(table.IndexOf(name));
    } catch (const DataError& error) {
        return error.what();
    }
    return "none";
}

TEST(MissingCodeTest, IsTheFirstThatLiesFarBelow) {
    const struct {
        std::vector<double> Values;
        double Code;
    } cases[] = {
        {{}, -9999},
        {{Missing, Missing}, -9999},
        {{Infinity, -Infinity, Missing}, -9999},
        {{1, 2, 3}, -9999},
        {{-9988, -9988}, -9999},  // the limit is -9998
        {{-9989, -9989}, -99999},  // the limit is -9999 itself
        {{0, 998}, -9999},  // the limit is -9990
        {{0, 998.9}, -99999},  // the limit is -9999 itself
        {{-9999, 5}, -999999},
        {{0, 1e6, Infinity, -Infinity}, -99999999},
        {{-1e16 + 20, -1e16 + 20}, 1 - 1e17},  // 1 - 1e16 is low enough, but nearly equal
    };
    for (const auto& row : cases) {
        EXPECT_EQ(CodeFor(row.Values), row.Code) << testing::PrintToString(row.Values);
    }
}

TEST(MissingCodeTest, IsFreeWhereTheRangeLeavesNoCode) {
    EXPECT_EQ(CodeFor({-1e307, 1e308}), -Largest);
    const double code = CodeFor({-Largest, Largest, std::nextafter(-Largest, 0.0)});
    EXPECT_FALSE(NearlyEqual(code, -Largest));
    EXPECT_TRUE(std::isfinite(code));
}

TEST(MissingCodeTest, ReplacesNothingButMissingValues) {
    std::vector<double> values{1, Missing, -Infinity, 4};
    EXPECT_EQ(EncodeMissing(values), -9999);
    EXPECT_EQ(values, (std::vector<double>{1, -9999, -Infinity, 4}));
}

TEST(VariableTest, TextsAreNumberedInByteOrder) {
    Variable variable;
    EncodeTexts(variable, {"b", std::nullopt, "\xC3\xA4", "B", "b", "ab"});
    EXPECT_EQ(variable.Kind, ValueKind::Text);
    EXPECT_EQ(variable.Texts, (std::vector<std::string>{"B", "ab", "b", "\xC3\xA4"}));
    EXPECT_EQ(variable.Values, (std::vector<double>{3, -9999, 4, 1, 3, 2}));
    EXPECT_TRUE(variable.IsMissing(variable.Values[1]));
}

TEST(VariableTest, LabelsComeBeforeTexts) {
    Variable variable;
    EncodeTexts(variable, {"f", "m", "x"});
    variable.Labels[1].Label = "Female";
    variable.Labels[2].Description = "a man";
    EXPECT_EQ(LabelOrNone(variable, 1), "Female");
    EXPECT_EQ(LabelOrNone(variable, 2), "m");
    for (const double value : {0.0, 0.5, 1.5, 4.0, -9999.0, 1e300, Missing, Infinity}) {
        EXPECT_EQ(LabelOrNone(variable, value), "none") << value;
        EXPECT_EQ(variable.DescriptionOf(value), nullptr) << value;
    }
    EXPECT_EQ(variable.DescriptionOf(1), nullptr);
    EXPECT_EQ(*variable.DescriptionOf(2), "a man");
}

TEST(VariableTest, DescriptionsAreNoLabels) {
    Variable variable;
    variable.Labels[1].Description = "one";
    EXPECT_FALSE(variable.HasLabels());
    variable.Labels[1].Label = "1st";
    EXPECT_TRUE(variable.HasLabels());
}

TEST(VariableTest, MissingIsWhatIsNearlyTheCode) {
    const Variable variable;
    EXPECT_TRUE(variable.IsMissing(FromOrderedBits(OrderedBits(-9999) + 15)));
    EXPECT_FALSE(variable.IsMissing(FromOrderedBits(OrderedBits(-9999) + 16)));
    EXPECT_FALSE(variable.IsMissing(Missing));
}

TEST(DataTableTest, NamesAreFoundExactly) {
    DataTable table;
    table.Variables.resize(2);
    table.Variables[1].Name = "Age";
    EXPECT_EQ(table.IndexOf("Age"), 1U);
    EXPECT_EQ(table.Find("age"), std::nullopt);
    EXPECT_EQ(RefusalOf(table, "age"), "The data have no variable named \"age\"; did you mean \"Age\"?");
    EXPECT_EQ(RefusalOf(table, "Ages"), "The data have no variable named \"Ages\".");
}

TEST(DataTableTest, SizeIsWhatAnAnalysisCanNumber) {
    EXPECT_NO_THROW(CheckSize(32766, 2147483646));
    EXPECT_THROW(CheckSize(32767, 0), DataError);
    EXPECT_THROW(CheckSize(1, 2147483647), DataError);
}

TEST(DataTableTest, CaseNamesAreAsWideAsTheLongest) {
    DataTable table;
    EXPECT_EQ(table.CaseNameWidth(), 0U);
    table.CaseNames = {"a", "case 2", ""};
    EXPECT_EQ(table.CaseNameWidth(), 6U);
}

}  // namespace
}  // namespace quillara
