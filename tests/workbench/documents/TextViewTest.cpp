#include <gtest/gtest.h>

#include <limits>

#include "tests/workbench/documents/ResultSamples.h"

namespace quillara {
namespace {

/// What stands below the header of a table with a single column.
std::string Drawn(const Cells& cells, SpreadsheetColumn column = {"Value", false}) {
    const std::string text = TextView(Collection({ColumnTable(cells, std::move(column))}));
    return text.substr(text.find("-\n") + 2);
}

TEST(TextView, NothingWithoutDocuments) {
    EXPECT_EQ(TextView({}), "");
}

TEST(TextView, TablesStandBelowEachOther) {
    EXPECT_EQ(TextView(Collection({FrequencyTable(), SummaryTable()})),
              "Frequency table of sex\n"
              "N Total: 8, Selected: 7\n"
              "age = 30\n"
              "\n"
              "               Cumulative\n"
              "        Count       Count  Percent(%)  Description\n"
              "------  -----  ----------  ----------  ---------------\n"
              "Female      3           3       42.86  said \"she\", <b>\n"
              "Male        4           7       57.14\n"
              "\n"
              "Summary of drill-down analysis\n"
              "\n"
              "Variable  Category\n"
              "--------  --------\n"
              "age       30\n"
              "sex       Female\n");
}

TEST(TextView, StepsHaveHeadingsWhenTheyStandTogether) {
    OutputCollection outputs = Collection({ColumnTable({1.0})});
    outputs.StepTexts = {"Down: sex = Female"};
    outputs.BeginCommand(9060, 1);
    outputs.Add(ColumnTable({2.0}));
    EXPECT_EQ(TextView(outputs),
              "Step 0 - All cases\n"
              "==================\n"
              "\n"
              "Values\n\n   Value\n-  -----\na      1\n"
              "\n"
              "Step 1 - Down: sex = Female\n"
              "===========================\n"
              "\n"
              "Values\n\n   Value\n-  -----\na      2\n");
}

TEST(TextView, ATableWithoutRowsSaysSo) {
    EXPECT_EQ(Drawn({}), "(no rows)\n");
}

TEST(TextView, DecimalsAreThoseThatTheColumnNeeds) {
    const SpreadsheetCell none = std::string("-");
    EXPECT_EQ(Drawn({1.0, 20.0}), "a      1\nb     20\n");
    EXPECT_EQ(Drawn({1.5, 20.0}), "a    1.5\nb   20.0\n");
    EXPECT_EQ(Drawn({1.23456, -20.0}), "a    1.2346\nb  -20.0000\n");
    EXPECT_EQ(Drawn({1.23456, none, noCell}), "a  1.2346\nb       -\nc\n");
    EXPECT_EQ(Drawn({1.23456}, {"Percent(%)", false}), "a        1.23\n");
    EXPECT_EQ(Drawn({2.9999999999999996}, {"Value", true}), "a      3\n");
}

TEST(TextView, NumbersOutOfTheCommonRangeKeepTheirDigits) {
    EXPECT_EQ(Drawn({0.0, 0.00012345678}), "a          0\nb  0.0001235\n");
    EXPECT_EQ(Drawn({0.0031}, {"Percent(%)", false}), "a      0.0031\n");
    EXPECT_EQ(Drawn({1e20, -1e-30}), "a   1e+20\nb  -1e-30\n");
    EXPECT_EQ(Drawn({-0.0, std::numeric_limits<double>::infinity()}), "a      0\nb\n");
}

TEST(TextView, TextsAreHarmlessAndAligned) {
    const SpreadsheetDocument document{{"T"},
                                       "Name",
                                       {{"Mean          ", false}, {"Text", false}},
                                       {{"\u6771\u4eac", {1.0, std::string("a\tb\r\n")}},
                                        {"e\u0301a", {2.0, std::string("\x1b[31m\u009bx\x07")}},
                                        {"cut \xE2\x82", {3.0, std::string("\xFF\xC0\x80\xED\xA0\x80")}}}};
    EXPECT_EQ(TextView(Collection({document})),
              "T\n"
              "\n"
              "Name  Mean  Text\n"
              "----  ----  --------\n"
              "\u6771\u4eac     1  a b\n"
              "e\u0301a       2  \uFFFD[31m\uFFFDx\uFFFD\n"
              "cut      3  \uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\n");
}

}  // namespace
}  // namespace quillara
