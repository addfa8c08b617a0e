// What numbers, dates and missing values of delimited text are, beyond the plain forms.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/workbench/formats/FormatsTesting.h"

namespace quillara {
namespace {

std::pair<std::string, std::string> ReadWithRemarks(const std::string& text, ReadOptions options) {
    const TemporaryFolder folder;
    std::string codes;
    options.Noticed = [&codes](const Remark& remark) { codes += (codes.empty() ? "" : " ") + remark.Code; };
    const std::string shown = ShowFile(folder.Put("data.csv", text), options);
    return {shown, codes};
}

std::string Read(const std::string& text, const ReadOptions& options = {}) {
    return ReadWithRemarks(text, options).first;
}

// clang-format off
TEST(FieldNotations, DecimalsAreToldByAllVariablesTogether) {
    const struct {
        const char* Text = "";
        ReadOptions Options;
        const char* Shown = "";
        const char* Codes = "";  // of the remarks
    } cases[] = {
        {"a;b\n850;1,5\n1.234;2,25\n2.500;-\n", {.MissingTexts = {{"-"}}}, "a N 850 1234 2500; b N 1.5 2.25 -", "texts-as-numbers texts-as-numbers"},
        {"a;b;c\n1.234;1,5;12.5\n",            {},                         "a N 1.234; b N 1.5; c N 12.5", "texts-as-numbers points-in-doubt"},
        {"a;b\n1.234;x\n850;y\n",              {},                         "a N 1.234 850; b T x y", "points-in-doubt"},
        {"a;b\n1.234;0.5\n850;7\n",            {},                         "a N 1.234 850; b N 0.5 7", ""},
        {"a\tb\n1.234\tx\n850\ty\n",          {},                         "a N 1.234 850; b T x y", ""},
        {"a;b\n1.234;x\n850;y\n",              {.Decimal = '.'},           "a N 1.234 850; b T x y", ""},
        {"a;b\n1.234;x\n850;y\n",              {.Decimal = ','},           "a N 1234 850; b T x y", "texts-as-numbers"},
        {"a;b\n1,234;x\n",                     {.Decimal = '.'},           "a N 1234; b T x", "texts-as-numbers"},
        {"a;b\n1,5;x\n",                       {.Decimal = '.'},           "a T 1,5; b T x", ""},
        {"a;b\n1.234;1,5\n",                   {.KeepsTexts = true},       "a N 1.234; b T 1,5", ""},
        {"a,b\n1.234,\"1.234,5\"\n",           {},                         "a N 1234; b N 1234.5", "texts-as-numbers"},
    };
    for (const auto& test : cases) {
        const auto [shown, codes] = ReadWithRemarks(test.Text, test.Options);
        EXPECT_EQ(shown, test.Shown) << test.Text;
        EXPECT_EQ(codes, test.Codes) << test.Text;
    }
}

TEST(FieldNotations, DatesInOneNotationAreRead) {
    const struct {
        const char* Fields = "";  // with bars between
        ReadOptions Options;
        const char* Shown = "";
    } cases[] = {
        {"31.12.2024|1.2.2025|NA",      {},                               "v D 2024-12-31 2025-02-01 -"},
        {"01.02.2024",                  {},                               "v D 2024-02-01"},
        {"01.02.2024",                  {.Dates = DateOrder::MonthFirst}, "v D 2024-01-02"},
        {"31.12.68|1.1.69",             {},                               "v D 2068-12-31 1969-01-01"},
        {"1/13/2024|2/3/2024",          {},                               "v D 2024-01-13 2024-02-03"},
        {"13/1/2024|2/3/2024",          {},                               "v D 2024-01-13 2024-03-02"},
        {"1-2-2024",                    {},                               "v T 1-2-2024"},
        {"1-2-2024",                    {.Dates = DateOrder::DayFirst},   "v D 2024-02-01"},
        {"1-2-2024",                    {.Dates = DateOrder::MonthFirst}, "v D 2024-01-02"},
        {"5/5/2024",                    {},                               "v D 2024-05-05"},
        {"13/1/2024|1/13/2024",         {},                               "v T 13/1/2024 1/13/2024"},
        {"13/1/2024",                   {.Dates = DateOrder::MonthFirst}, "v D 2024-01-13"},
        {"13/1/2024",                   {.KeepsTexts = true},             "v T 13/1/2024"},
        {"13/1/2024",                   {.Texts = {"v"}},                 "v T 13/1/2024"},
        {"30.02.2024",                  {},                               "v T 30.02.2024"},
        {"31.12.2024|2024-12-31",       {},                               "v T 31.12.2024 2024-12-31"},
        {"2024/1/13|2024/02/03",        {},                               "v D 2024-01-13 2024-02-03"},
        {"13 Dec 2024|1-January-24",    {},                               "v D 2024-12-13 2024-01-01"},
        {"December 13, 2024|May 1 2024", {},                              "v D 2024-12-13 2024-05-01"},
        {"1/13/2024 3:05 PM|1/2/2024 12:00 AM", {},                       "v M 2024-01-13 15:05:00 2024-01-02 00:00:00"},
        {"13.1.2024 23:59:59|1.1.2024", {},                               "v M 2024-01-13 23:59:59 2024-01-01 00:00:00"},
        {"13.1.2024 25:00",             {},                               "v T 13.1.2024 25:00"},
        {"1.2.3|1.2.10",                {},                               "v T 1.2.3 1.2.10"},
    };
    for (const auto& test : cases) {
        std::string text = "v\tw\n" + std::string(test.Fields) + "\tx\n";
        for (std::size_t bar = 0; (bar = text.find('|')) != std::string::npos;) {
            text.replace(bar, 1, "\tx\n");
        }
        const std::string both = Read(text, test.Options);
        EXPECT_EQ(both.substr(0, both.find(';')), test.Shown) << text;
    }
    // Another variable with the same sign decides
    EXPECT_EQ(Read("a,b,c\n1/2/2024,13/1/2024,1-2-2024\n"), "a D 2024-02-01; b D 2024-01-13; c T 1-2-2024");
    EXPECT_EQ(Read("a,b,c\n1/2/2024,13/1/2024,1/13/2024\n"), "a T 1/2/2024; b D 2024-01-13; c D 2024-01-13");
}

TEST(FieldNotations, TitlesAboveTheNamesArePassedOver) {
    const std::string behind = "; the first record has 2 (separator: comma; --separator sets another; ";
    const struct {
        std::string Text;
        ReadOptions Options;
        std::string Shown;
        const char* Codes = "";
    } cases[] = {
        {"Report\n\nof; x\na,b\n1,2\n",   {.TitleRecords = 3},                     "a N 1; b N 2"},
        {"Report,\n\n,\na,b\n1,2\n",      {.TitleRecords = 1},                     "a N 1; b N 2"},
        {"\"Report\nx\"\n1,2\n",          {.TitleRecords = 1, .HasHeader = false}, "Var1 N 1; Var2 N 2"},
        {"a,b\n\xE9,2\nx,3\n",            {.TitleRecords = 1},                     "é T x; 2 N 3", "names-like-values"},
        {"x;y;z\nx;y;z\nx;y;z\na,b\n1,2\n", {.TitleRecords = 3},                  "a N 1; b N 2"},
        {"a,b\n1,2\n",                     {.TitleRecords = 3},                     "\"@\" holds nothing below the titles."},
        {"\"t\na,b\n1,2\n",                {.TitleRecords = 1},                     "\"@\", line 1: a quote is opened and never closed."},
        {"t\na,b\n1\n", {.Separator = ',', .TitleRecords = 1}, "\"@\", line 3: 1 field instead of 2" + behind + "a text with a line break in it has to stand in quotes)."},
        // Not passed over, they are told
        {"t\nu, v\n\na;b\n1,5;2\n3;4\n",  {}, "\"@\", line 4: 2 fields instead of 1; the first record has 1 (separator: semicolon; --separator sets another; if the names stand below titles, --skip 3 passes over what is above them)."},
        {"a,b\nx,y,1\nz,2\nv,3\n",        {}, "\"@\", line 2: 3 fields instead of 2" + behind + "a text with a comma in it has to stand in quotes)."},
        {"t\nu\nv\na,b\n1,2\n",           {},                                       "t T u v a,b 1,2", "single-variable"},
        {"\nt,,\n,,\na,b,c\n1,,2\n3,,\n",  {},                                       "t T - a 1 3; Var2 T - b - -; Var3 T - c 2 -", "names-missing"},
        {"a,b,\n1,2,\n3,4,\n",             {},                                       "a N 1 3; b N 2 4; Var3 N - -"},
        // So is a second line of names
        {"a,b,c\nx,cm,kg\ny,1,2\nz,,3\n",  {},                                       "a T x y z; b T cm 1 -; c T kg 2 3", "second-names"},
        {"a,b\n,2024-01-01\n,x\n,x\n",     {},                                       "a N - - -; b T 2024-01-01 x x"},
        {"a,b\nx,unknown\ny,1\nz,2\n",     {},                                       "a T x y z; b T unknown 1 2"},
    };
    for (const auto& test : cases) {
        const auto [shown, codes] = ReadWithRemarks(test.Text, test.Options);
        EXPECT_EQ(shown, test.Shown) << test.Text;
        EXPECT_EQ(codes, test.Codes) << test.Text;
    }
}

TEST(FieldNotations, CasesThatMayBeNoneAreTold) {
    const std::string rows = "g,a,b\nx,1,2\ny,3,4\nz,5,6\n";
    const struct {
        std::string Text;
        std::string Remarks;  // code and case of each, and how it is left out
    } cases[] = {
        {rows, ""},
        {rows + "TOTAL:,9,12\n", "totals-row 3 [g] <> \"TOTAL:\""},
        {rows + ",9,12\n", "totals-row 3 not missing([g])"},
        {rows + ",9,13\n", ""},
        {rows + "Total,9,12\n,,\nSource: us,,\n", "totals-row 3 [g] <> \"Total\"; notes-below 5 not missing([a])"},
        {rows + "Sourdough,,\n", ""},
        {rows + "* estimated,,\n1) so,,\n", "notes-below 4 not missing([a])"},
        {rows + "g,a,b\nx,7,8\ng,a,b\n", "names-again 3 -"},
        {"g,h,\ni,j,\ng,h,\n", "names-again 1 -"},
        {"g,\ni,\ng,\n", ""},
        {rows + "g,a,c\n", ""},
        {rows + ",,\n,,\n", "cases-empty 4 not missing([g])"},
        {"g,a\nTotal,1\nx,2\nTotal,3\nx,4\n", "totals-row 0 [g] <> \"Total\""},
        {"g,a\nTotal,1\nTotal,3\n", ""},
        {"g,a,b\nx,,1\ny,3,\n,4,5\n,,\n", "cases-empty 3 -"},
    };
    const TemporaryFolder folder;
    for (const auto& test : cases) {
        std::string told;
        const auto take = [&told](const Remark& remark) {
            const std::size_t begin = remark.Advice.find("--select '");
            const std::string formula =
                begin == std::string::npos ? "-" : remark.Advice.substr(begin + 10, remark.Advice.find("', or") - begin - 10);
            told += (told.empty() ? "" : "; ") + remark.Code + " " + std::to_string(remark.Case.value()) + " " + formula;
        };
        const DataTable table = ReadDataFile(folder.Put("data.csv", test.Text), {.Noticed = take});
        EXPECT_EQ(told, test.Remarks) << test.Text;
    }
}

TEST(FieldNotations, CodesWithLeadingZerosStayTexts) {
    const struct {
        const char* Text = "";
        ReadOptions Options;
        const char* Shown = "";
        const char* Codes = "";
    } cases[] = {
        {"a;b\n01234;1\nNA;2\n20095;3\n", {},                      "a T 01234 - 20095; b N 1 2 3", "leading-zeros"},
        {"a;b\n01234;1\n20095;3\n",       {.KeepsTexts = true},    "a T 01234 20095; b N 1 3", "leading-zeros"},
        {"a;b\n01234;1\n20095;3\n",       {.Numbers = {"a"}},      "a N 1234 20095; b N 1 3", ""},
        {"a;b\n007;1\n12;3\n",            {},                      "a N 7 12; b N 1 3", "leading-zeros"},
        {"a;b\n007;1\n12;3\n",            {.Texts = {"a"}},        "a T 007 12; b N 1 3", ""},
        {"a;b\n0;0.5\n10;00.5\n",         {},                      "a N 0 10; b N 0.5 0.5", "leading-zeros"},
        {"a;b\n-01;0.5\n010;0.7\n",       {},                      "a N -1 10; b N 0.5 0.7", "leading-zeros"},
        {"a;b\nx;1\n2;1\n",               {.Numbers = {"a"}},      "The variable \"a\" can't be read as numbers: some of its texts are none.", ""},
        {"a;b\nx;1\n2;1\n",               {.Texts = {"c"}},        "The data have no variable named \"c\".", ""},
    };
    for (const auto& test : cases) {
        const auto [shown, codes] = ReadWithRemarks(test.Text, test.Options);
        EXPECT_EQ(shown, test.Shown) << test.Text;
        EXPECT_EQ(codes, test.Codes) << test.Text;
    }
}

TEST(FieldNotations, ValuesAreDeclaredMissingOrLookSo) {
    std::string ages = "age;q;d\n";
    for (int age = 20; age < 32; ++age) {
        ages += std::to_string(age) + ";" + std::to_string(age % 5 + 1) + ";x\n";
    }
    const struct {
        std::string Rows;
        ReadOptions Options;
        const char* Codes = "";
    } cases[] = {
        {"",                          {},                                                  ""},
        {"999;3;x\n",                 {},                                                  "likely-missing"},
        {"99;3;x\n",                  {},                                                  ""},
        {"20;99;x\n20;98;x\n",        {},                                                  ""},
        {"20;-9;x\n20;-8;x\n",        {},                                                  "likely-missing"},
        {"20;-1;x\n",                 {},                                                  ""},
        {"20;-1;x\n21;-1;x\n",        {},                                                  "likely-missing"},
        {"20;-1;x\n21;-1;x\n22;0;x\n", {},                                                 ""},
        {"999;3;x\n",                 {.MissingValues = {{"age", {"999"}}}},               ""},
        {"21;3;x\n",                  {.MissingValues = {{"age", {"97..99"}}}},            "missing-not-found"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(ReadWithRemarks(ages + test.Rows, test.Options).second, test.Codes) << test.Rows;
    }
    std::string rates = "a\tb\nk.A.\tx\n";
    for (int rate = 0; rate < 9; ++rate) {
        rates += std::to_string(rate) + "%\tx\n";
    }
    EXPECT_EQ(ReadWithRemarks(rates, {}).second, "");
    EXPECT_EQ(ReadWithRemarks(rates + "9,5%\tx\n", {}).second, "near-numbers");
    EXPECT_EQ(ReadWithRemarks(ages + "total;5;x\n", {}).second, "near-numbers totals-row");
    EXPECT_EQ(Read("a;b;c\n1;x;2024-01-01\n98;y;2024-01-02\n99;z;9999-12-31\n;z;\n",
                   {.MissingValues = {{"a", {"98..99"}}, {"b", {"z", "y"}}, {"c", {"9999-12-31"}}}}),
              "a N 1 - - -; b T x - - -; c D 2024-01-01 2024-01-02 - -");
    EXPECT_EQ(Read("a;b\n9999-12-31;x\n2024-01-01T10:00;y\n", {.MissingValues = {{"a", {"9999-12-31"}}}}),
              "a M - 2024-01-01 10:00:00; b T x y");
    EXPECT_EQ(Read("a;b\n1;x\n", {.MissingValues = {{"a", {"x"}}}}),
              "\"x\" is no value of the variable \"a\"; missing values are given as 99, 97..99 or with a label.");
}
// clang-format on

}  // namespace
}  // namespace quillara
