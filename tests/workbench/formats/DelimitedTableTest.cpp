#include "workbench/formats/DelimitedTable.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

std::string Read(const std::string& text, const ReadOptions& options = {}) {
    const TemporaryFolder folder;
    return ShowFile(folder.Put("data.csv", text), options);
}

struct Case {
    const char* Text;
    const char* Shown;
};

void ExpectAll(std::initializer_list<Case> cases, const ReadOptions& options = {}) {
    for (const Case& test : cases) {
        EXPECT_EQ(Read(test.Text, options), test.Shown) << test.Text;
    }
}

// clang-format off
TEST(DelimitedTable, RecordsAndQuotes) {
    ExpectAll({
        {"",                              "\"@\" is empty."},
        {"\n \n",                         "\"@\" is empty."},
        {"a,b\n",                         "a N; b N"},
        {"a,b\n1,2",                      "a N 1; b N 2"},
        {"a,b\n1,",                       "a N 1; b N -"},
        {"a,b\r1,2\r\n3,4\n",             "a N 1 3; b N 2 4"},
        {"\n\r\n a , b\n\n1,2\n \t\n3,4", "a N 1 3; b N 2 4"},
        {"a,b\n\"x,1\",\"y\nz\"\n",       "a T x,1; b T y\nz"},
        {"a,b\n\"x\"\"y\"\"\",1\n",       "a T x\"y\"; b N 1"},
        {"a,b\n\"x\"y \"z\",1\n",         "a T xy \"z\"; b N 1"},
        {"a,b\nx\"y\",1\n",               "a T x\"y\"; b N 1"},
        {"a,b\n \"x\",1\n",               "a T \"x\"; b N 1"},
        {"a,b\n\" x \", y z\t\n",         "a T x; b T y z"},
        {"a,b\n\"\",1\n",                 "a N -; b N 1"},
        {"a\n1\n\n2\n\n",                 "a N 1 - 2 -"},
        {"\n\na\n1\n",                    "a N 1"},
        {"\xEF\xBB\xBF""a,b\n1,2\n",      "a N 1; b N 2"},
        {"\xEF\xBB\xBF""a,b\n\xE9,2\n",   "a T é; b N 2"},
        {"a,b\n\xE9,\x80\n",              "a T é; b T €"},
        {"a,b\né,\xE2\x82\xAC\n",         "a T é; b T €"},
    });
}

TEST(DelimitedTable, ErrorsNameTheLine) {
    ExpectAll({
        {"a,b\n1,2\n1,2,3\n",             "\"@\", line 3: 3 fields instead of 2."},
        {"a,b\n1,2\n\n7\n1,2\n",          "\"@\", line 4: 1 field instead of 2."},
        {"a,b\n\"x\r\n\ny\",2\n1,2\n1\n", "\"@\", line 6: 1 field instead of 2."},
        {"a,b\n1,2\n\"\"\n1,2\n",         "\"@\", line 3: 1 field instead of 2."},
        {"a,b\n1,2\n3,\"4\n5,6\n",        "\"@\", line 3: a quote is opened and never closed."},
        {"a,b\nx,2\n\"\n\",1e999\n",      "\"@\", line 4: a number is too large: 1e999."},
        {"a,b\nx,y\n1,-1e400\n",          "a T x 1; b T y -1e400"},
        {"a,b\n1,1e-999\n",               "a N 1; b N 0"},
    });
    EXPECT_EQ(Read(std::string("a,b\n1,\0\n", 8)), "\"@\" is no delimited text.");
    EXPECT_EQ(Read(std::string("\xFF\xFE" "a\0\n\0", 6)),
              "\"@\" is no delimited text in UTF-8 or Windows-1252; try the encoding utf-16.");
}

TEST(DelimitedTable, TooManyVariablesAreAnError) {
    EXPECT_EQ(Read(std::string(32765, ',') + "\n").substr(0, 6), "Var1 N");
    EXPECT_NE(Read(std::string(32766, ',') + "\n").find("32767 variables"), std::string::npos);
}

TEST(DelimitedTable, SeparatorIsTheOneOnWhichMostRecordsAgree) {
    ExpectAll({
        {"a;b\n1;2\n",                    "a N 1; b N 2"},
        {"a\tb\n1\t\n\t\n",               "a N 1 -; b N - -"},
        {"a|b\n1|2\n",                    "a N 1; b N 2"},
        {"a b\n1 2\n",                    "a b T 1 2"},
        {"a,b;c\n1,2;3\n",                "a N 1; b;c T 2;3"},
        {"a;b\n1,5;x\n2,5,1;y\n",         "a T 1,5 2,5,1; b T x y"},
        {"a\nx,1\ny,z,1\n",               "a T x,1 y,z,1"},
        {"a\nx,1\n",                      "a T x,1"},
    });
    std::string text = "a;b\n";
    for (int i = 0; i < 999; ++i) {
        text += "1;2\n";
    }
    EXPECT_EQ(Read(text + "3,4\n"), "\"@\", line 1001: 1 field instead of 2.");
}
// clang-format on

TEST(DelimitedTable, NamesAreMadeUnique) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(VariableNames({"", "a", ""}), (Names{"Var1", "a", "Var3"}));
    EXPECT_EQ(VariableNames({"a", "A", "a", "a"}), (Names{"a", "A", "a_2", "a_3"}));
    EXPECT_EQ(VariableNames({"a", "a", "a_2", "a"}), (Names{"a", "a_3", "a_2", "a_4"}));
    EXPECT_EQ(VariableNames({"Var2", ""}), (Names{"Var2", "Var2_2"}));
}

TEST(DelimitedTable, MissingTextsAndKinds) {
    for (const char* text : {"", "NA", "N/A", "NaN", "nan", "null", "NULL", "None", ".", "?", "\"NA\"", " ? "}) {
        EXPECT_EQ(Read("a;b\n1;" + std::string(text) + "\n"), "a N 1; b N -") << text;
    }
    EXPECT_EQ(Read("a,b\n1,2\nna,none\n"), "a T 1 na; b T 2 none");
    EXPECT_EQ(Read("a,b\n2024-02-29,2024-02-28\n?,2023-02-29\n"), "a D 2024-02-29 -; b T 2024-02-28 2023-02-29");
    EXPECT_EQ(Read("a,b\n2024-02-29,x\n5,-\n"), "a T 2024-02-29 5; b T x -");
}

TEST(DelimitedTable, OptionsOverride) {
    EXPECT_EQ(Read("1,2\n3,x\n", {.HasHeader = false}), "Var1 N 1 3; Var2 T 2 x");
    EXPECT_EQ(Read("\n1\n\n", {.HasHeader = false}), "Var1 N - 1 -");
    EXPECT_EQ(Read("a;b\n1,5;x\n,5;y\n", {.Decimal = ','}), "a N 1.5 0.5; b T x y");
    EXPECT_EQ(Read("1,5;2,5\n", {.Decimal = ',', .HasHeader = false}), "Var1 N 1.5; Var2 N 2.5");
    EXPECT_EQ(Read("a,b\n\"1,5\",1.5\n", {.Decimal = ','}), "a N 1.5; b T 1.5");
    EXPECT_EQ(Read("a,b;c\n1,2;3\n", {.Separator = ';'}), "a,b T 1,2; c N 3");
    EXPECT_EQ(Read("a,b\n99,NA\n1,\n", {.MissingTexts = {{"99"}}}), "a N - 1; b T NA -");
    EXPECT_EQ(Read("a,b\n\xE9,1\n", {.Encoding = "Latin1"}), "a T é; b N 1");
    EXPECT_EQ(Read("a,b\n\x80,1\n", {.Encoding = "cp1252"}), "a T €; b N 1");
    EXPECT_EQ(Read(std::string("\xFF\xFE"
                               "a\0\n\0"
                               "7\0",
                               8),
                   {.Encoding = "utf-16"}),
              "a N 7");
    EXPECT_EQ(Read("a,b\n\xE9,1\n", {.Encoding = "utf-8"}),
              "\"@\" can't be read: The text isn't in the encoding utf-8.");
    const TemporaryFolder folder;
    const std::string path = folder.Put("data.csv", "a,b\n");
    EXPECT_THROW((void)ReadDataFile(path, {.Encoding = "klingon"}), UsageError);
    EXPECT_THROW((void)ReadDataFile(path, {.Separator = '"'}), UsageError);
}

TEST(DelimitedTable, RealData) {
    if (TestData().empty()) {
        GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder of real data";
    }
    const DataTable adult = ReadDataFile(TestData() + "/adult.csv");
    EXPECT_EQ(adult.Cases, 32561);
    EXPECT_EQ(adult.Variables.size(), 15U);
    const Variable& sex = adult.Variables[adult.IndexOf("sex")];
    EXPECT_EQ(sex.Texts, (std::vector<std::string>{"Female", "Male"}));
    EXPECT_EQ(std::count(sex.Values.begin(), sex.Values.end(), 1.0), 10771);
    EXPECT_EQ(std::count(sex.Values.begin(), sex.Values.end(), 2.0), 21790);
    EXPECT_EQ(ReadDataFile(TestData() + "/penguins.csv").Cases, 344);
}

}  // namespace
}  // namespace quillara
