#include "workbench/formats/DelimitedTable.h"

#include <gtest/gtest.h>

#include <sstream>

#include <bit>
#include <random>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/Encoding.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/ShortDecimal.h"

namespace quillara {
namespace {

const std::string OfTwo = "; the first record has 2 (separator: comma; --separator sets another; a text with a ";
const std::string InQuotes = " in it has to stand in quotes).";

using Fields = std::vector<std::string>;

std::string Read(const std::string& text, const ReadOptions& options = {}) {
    const TemporaryFolder folder;
    return ShowFile(folder.Put("data.csv", text), options);
}

// clang-format off
TEST(DelimitedTable, Shows) {
    const std::pair<std::string, std::string> cases[] = {
        // Records, quotes and encodings
        {"", "\"@\" is empty."},                               {"\n \n", "\"@\" is empty."},
        {"a,b\n", "a N; b N"},                                 {"a,b\n1,2", "a N 1; b N 2"},
        {"a,b\n1,", "a N 1; b N -"},                           {"a,b\r1,2\r\n3,4\n", "a N 1 3; b N 2 4"},
        {"\n\r\n a , b\n\n1,2\n \t\n3,4", "a N 1 3; b N 2 4"}, {"a,b\n\"x,1\",\"y\nz\"\n", "a T x,1; b T y\nz"},
        {"a,b\n\"x\"\"y\"\"\",1\n", "a T x\"y\"; b N 1"},      {"a,b\n\"x\"y \"z\",1\n", "a T xy \"z\"; b N 1"},
        {"a,b\nx\"y\",1\n", "a T x\"y\"; b N 1"},              {"a,b\n \"x\",1\n", "a T \"x\"; b N 1"},
        {"a,b\n\" x \", y z\t\n", "a T x; b T y z"},           {"a,b\n\"\",1\n", "a N -; b N 1"},
        {"a\n1\n\n2\n\n", "a N 1 - 2 -"},                      {"\n\na\n1\n", "a N 1"},
        {"\xEF\xBB\xBF""a,b\n1,2\n", "a N 1; b N 2"},          {"\xEF\xBB\xBF""a,b\n\xE9,2\n", "a T é; b N 2"},
        {"a,b\n\xE9,\x80\n", "a T é; b T €"},                  {"a,b\né,\xE2\x82\xAC\n", "a T é; b T €"},
        // Errors name the line
        {"a,b\n1,2\n1,2,3\n", "\"@\", line 3: 3 fields instead of 2" + OfTwo + "comma" + InQuotes},
        {"a,b\n1,2\n\n7\n1,2\n", "\"@\", line 4: 1 field instead of 2" + OfTwo + "line break" + InQuotes},
        {"a,b\n\"x\r\n\ny\",2\n1,2\n1\n", "\"@\", line 6: 1 field instead of 2" + OfTwo + "line break" + InQuotes},
        {"a,b\n1,2\n\"\"\n1,2\n", "\"@\", line 3: 1 field instead of 2" + OfTwo + "line break" + InQuotes},
        {"a,b\n1,2\n3,\"4\n5,6\n", "\"@\", line 3: a quote is opened and never closed."},
        {"a,b\nx,2\n\"\n\",1e999\n", "\"@\", line 4: a number is too large: 1e999."},
        {"a,b\nx,y\n1,-1e400\n", "a T x 1; b T y -1e400"},     {"a,b\n1,1e-999\n", "a N 1; b N 0"},
        {std::string("a,b\n1,\0\n", 8), "\"@\" is no delimited text."},
        {std::string("\xFF\xFE" "a\0\n\0", 6), "a N"},
        // The separator is the one on which most records agree
        {"a;b\n1;2\n", "a N 1; b N 2"},                        {"a\tb\n1\t\n\t\n", "a N 1 -; b N - -"},
        {"a|b\n1|2\n", "a N 1; b N 2"},                        {"a b\n1 2\n", "a b T 1 2"},
        {"a,b;c\n1,2;3\n", "a N 1; b;c T 2;3"},                {"a;b\n1,5;x\n2,5,1;y\n", "a T 1,5 2,5,1; b T x y"},
        {"a\nx,1\ny,z,1\n", "a T x,1 y,z,1"},                  {"a\nx,1\n", "a T x,1"},
        // Names are made unique
        {",a,\n", "Var1 N; a N; Var3 N"},                      {"a,A,a,a\n", "a N; A N; a_2 N; a_3 N"},
        {"a,a,a_2,a\n", "a N; a_3 N; a_2 N; a_4 N"},           {"Var2,\n", "Var2 N; Var2_2 N"},
        // Kinds
        {"a,b\n1,2\nna,none\n", "a T 1 na; b T 2 none"},
        {"a,b\n2024-02-29,2024-02-28\n?,2023-02-29\n", "a D 2024-02-29 -; b T 2024-02-28 2023-02-29"},
        {"a,b\n2024-02-29,x\n5,-\n", "a T 2024-02-29 5; b T x -"},
    };
    for (const auto& [text, shown] : cases) {
        EXPECT_EQ(Read(text), shown) << text;
    }
    for (const char* text : {"", "NA", "N/A", "NaN", "nan", "null", "NULL", "None", ".", "?", "\"NA\"", " ? "}) {
        EXPECT_EQ(Read("a;b\n1;" + std::string(text) + "\n"), "a N 1; b N -") << text;
    }
}

TEST(DelimitedTable, OptionsOverride) {
    const struct {
        std::string Text;
        ReadOptions Options;
        const char* Shown;
    } cases[] = {
        {"1,2\n3,x\n",            {.HasHeader = false},                 "Var1 N 1 3; Var2 T 2 x"},
        {"\n1\n\n",               {.HasHeader = false},                 "Var1 N - 1 -"},
        {"a;b\n1,5;x\n,5;y\n",    {.Decimal = ','},                     "a N 1.5 0.5; b T x y"},
        {"1,5;2,5\n",             {.Decimal = ',', .HasHeader = false}, "Var1 N 1.5; Var2 N 2.5"},
        {"a,b\n\"1,5\",1.5\n",    {.Decimal = ','},                     "a N 1.5; b T 1.5"},
        {"a,b;c\n1,2;3\n",        {.Separator = ';', .KeepsTexts = true}, "a,b T 1,2; c N 3"},
        {"a,b\n99,NA\n1,\n",      {.MissingTexts = {{"99"}}},           "a N - 1; b T NA -"},
        {"a,b\n\xE9,1\n",         {.Encoding = "Latin1"},               "a T é; b N 1"},
        {"a,b\n\x80,1\n",         {.Encoding = "cp1252"},               "a T €; b N 1"},
        {"\xEF\xBB\xBFä,b\n1,2\n",  {.Encoding = "windows-1252"},         "ä N 1; b N 2"},
        {"\xEF\xBB\xBF" "a,b\n\x80,2\n", {.Encoding = "cp1252"},           "a T €; b N 2"},
        {"a,b\n\xE9,1\n",         {.Encoding = "utf-8"},                "\"@\" can't be read: The text isn't in the encoding utf-8."},
        {std::string("\xFF\xFE" "a\0\n\0" "7\0", 8), {.Encoding = "utf-16"}, "a N 7"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(Read(test.Text, test.Options), test.Shown) << test.Text;
    }
    const TemporaryFolder folder;
    const std::string path = folder.Put("data.csv", "a,b\n");
    EXPECT_THROW((void)ReadDataFile(path, {.Encoding = "klingon"}), UsageError);
    EXPECT_THROW((void)ReadDataFile(path, {.Separator = '"'}), UsageError);
}

TEST(DelimitedTable, NumbersInOneNotationAreRead) {
    const struct {
        const char* Fields;  // of one variable, with blanks between
        const char* Read;  // in files that commas, semicolons and tabs separate
    } cases[] = {
        // In groups of thousands, and not
        {"1,234 5",             "N 1234 5|T 1,234 5|N 1234 5"},
        {"1,234,567 5",         "N 1234567 5|N 1234567 5|N 1234567 5"},
        {"1,234.5 -7 +8.25",    "N 1234.5 -7 8.25|N 1234.5 -7 8.25|N 1234.5 -7 8.25"},
        {"1,234 5678",          "T 1,234 5678|N 1.234 5678|N 1.234 5678"},
        {"1,234 0.5 NA",        "N 1234 0.5 -|N 1234 0.5 -|N 1234 0.5 -"},
        {"1,23 4,5",            "T 1,23 4,5|N 1.23 4.5|N 1.23 4.5"},
        {"0,123 4",             "T 0,123 4|N 0.123 4|N 0.123 4"},
        {"1.234,5 6",           "N 1234.5 6|N 1234.5 6|N 1234.5 6"},
        {"1.234.567 8",         "N 1234567 8|N 1234567 8|N 1234567 8"},
        {"1.234,5 1,234.5",     "T 1.234,5 1,234.5|T 1.234,5 1,234.5|T 1.234,5 1,234.5"},
        {"1,2,3 4",             "T 1,2,3 4|T 1,2,3 4|T 1,2,3 4"},
        {"1,234 x",             "T 1,234 x|T 1,234 x|T 1,234 x"},
        // Percents are fractions, rounded once; signs stand at all or none
        {"10% 5.5% -7%",        "N 0.1 0.055 -0.07|N 0.1 0.055 -0.07|N 0.1 0.055 -0.07"},
        {"10,5% 1%",            "N 0.105 0.01|N 0.105 0.01|N 0.105 0.01"},
        {"10% 0.1",             "T 10% 0.1|T 10% 0.1|T 10% 0.1"},
        {"1e2% 50%",            "N 1 0.5|N 1 0.5|N 1 0.5"},
        {"$5 -$1,000 $-2",      "N 5 -1000 -2|T $5 -$1,000 $-2|N 5 -1000 -2"},
        {"€5 $5",               "T €5 $5|T €5 $5|T €5 $5"},
        {"$ %",                 "T $ %|T $ %|T $ %"},
        {"(1.50) ($2.50)",      "T (1.50) ($2.50)|T (1.50) ($2.50)|T (1.50) ($2.50)"},
        {"($2.50) $3.00- $1",   "N -2.5 -3 1|N -2.5 -3 1|N -2.5 -3 1"},
        {"5- 6-",               "T 5- 6-|T 5- 6-|T 5- 6-"},
        {"(5) (6)",             "T (5) (6)|T (5) (6)|T (5) (6)"},
        // Apostrophes and blanks between thousands
        {"1'234.5 7",           "N 1234.5 7|N 1234.5 7|N 1234.5 7"},
        {"1’234’567 1234",      "N 1234567 1234|N 1234567 1234|N 1234567 1234"},
        {"1\xC2\xA0" "234,5 12\xE2\x80\xAF" "345 7", "N 1234.5 12345 7|N 1234.5 12345 7|N 1234.5 12345 7"},
        {"0\xC2\xA0" "234 7", "T 0\xC2\xA0" "234 7|T 0\xC2\xA0" "234 7|T 0\xC2\xA0" "234 7"},
        {"--5% 1%",             "T --5% 1%|T --5% 1%|T --5% 1%"},
    };
    for (const auto& [fields, shown] : cases) {
        std::string read;
        for (const char* separator : {",", ";", "\t"}) {
            std::string text = std::string("v") + separator + "w\n";
            std::istringstream stream(fields);
            for (std::string field; stream >> field;) {
                text += '"' + field + '"' + separator + "x\n";
            }
            const std::string both = Read(text);
            read += (read.empty() ? "" : "|") + both.substr(2, both.find(';') - 2);
        }
        EXPECT_EQ(read, shown) << fields;
    }
    // A comma that is certain to be a decimal one tells of others; --decimal tells of all
    EXPECT_EQ(Read("a\tb\n1,234\t0,5\n"), "a N 1.234; b N 0.5");
    EXPECT_EQ(Read("a\tb\n1,234\t0.5\n"), "a N 1234; b N 0.5");
    EXPECT_EQ(Read("a\tb\n1,234\t1.234\n", {.Decimal = ','}), "a N 1.234; b N 1234");
    EXPECT_EQ(Read("a\tb\n1,234\t10%\n", {.KeepsTexts = true}), "a T 1,234; b T 10%");
}
// clang-format on

TEST(DelimitedTable, ManyRecordsAndVariables) {
    std::string text = "a;b\n";
    for (int i = 0; i < 999; ++i) {
        text += "1;2\n";
    }
    EXPECT_EQ(Read(text + "3,4\n")
                  .find("\"@\", line 1001: 1 field instead of 2; the first record has 2 (separator: semicolon;"),
              0U);
    EXPECT_EQ(Read(std::string(32765, ',') + "\n").substr(0, 6), "Var1 N");
    EXPECT_NE(Read(std::string(32766, ',') + "\n").find("32767 variables"), std::string::npos);
}

TEST(DelimitedText, SplitRecord) {
    EXPECT_EQ(SplitRecord(""), Fields{""});
    EXPECT_EQ(SplitRecord("a,,b,"), (Fields{"a", "", "b", ""}));
    EXPECT_EQ(SplitRecord("\"a,b\" ,  \"say \"\"x\"\"\",c\"d"), (Fields{"a,b", "say \"x\"", "c\"d"}));
    EXPECT_EQ(SplitRecord("a;b,c", ';'), (Fields{"a", "b,c"}));
    EXPECT_THROW((void)SplitRecord("a,\"b"), DataError);
}

// clang-format off
TEST(DecimalNumber, FollowsTheGrammarOfNumbers) {
    const std::pair<std::string, double> numbers[] = {
        {"7", 7},   {"+7", 7},      {"7.0", 7},   {"70e-1", 7},       {"0.07E+2", 7},
        {"007", 7}, {"-1e-400", 0}, {"0e999", 0}, {"5e-324", 5e-324}, {"1.7976931348623157e308", 0x1.fffffffffffffp1023},
        {"7.", 7},  {"+.7e1", 7},   {"7.e0", 7},  {"-3.E4", -30000},
    };
    double value = 0;
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(ReadDecimal(text, '.', value), DecimalOutcome::Number) << text;
        EXPECT_EQ(value, number) << text;
    }
    EXPECT_EQ(ReadDecimal("-,5", ',', value), DecimalOutcome::Number);
    EXPECT_EQ(value, -0.5);
    for (const char* text : {"", "+", ".", "-.", ".e1", "e5", ".e5", "7e", "7e+", "7 ", "1,5", "0x7", "inf", "nan",
                             "--7", "+-7", "7.0.0", "1e5.0", "1_000"}) {
        EXPECT_EQ(ReadDecimal(text, '.', value), DecimalOutcome::NoNumber) << text;
    }
    EXPECT_EQ(ReadDecimal("0.5", ',', value), DecimalOutcome::NoNumber);
    EXPECT_EQ(ReadDecimal("-1.8e308", '.', value), DecimalOutcome::TooLarge);
    EXPECT_EQ(ReadDecimal(std::string(400, '9'), '.', value), DecimalOutcome::TooLarge);
}

TEST(DecimalNumber, IsReadAlikeInOnePiece) {
    std::mt19937_64 chance(3);
    for (int i = 0; i < 2000000; ++i) {
        std::string text(chance() % 20, '0');
        for (char& character : text) {
            character = chance() % 16 == 0 ? ".,-+e \xB0:"[chance() % 8] : static_cast<char>('0' + chance() % 10);
        }
        const char decimal = i % 4 == 0 ? ',' : '.';
        double expected = 0;
        const DecimalOutcome outcome = ReadDecimal(text, decimal, expected);
        double value = 0;
        if (ReadShortDecimal(std::string_view(text + "123.5678,9012345").substr(0, text.size()), decimal, value)) {
            ASSERT_EQ(outcome, DecimalOutcome::Number) << text;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
        } else {
            ASSERT_TRUE(outcome != DecimalOutcome::Number || text.size() > 8 || text.find('e') != std::string::npos)
                << text;
        }
    }
}

TEST(Encoding, IsUtf8OnlyWhenWellFormed) {
    for (const char* text : {"", "a", "\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(IsUtf8(text)) << text;
    }
    for (const char* text : {"\x80", "\xC0\x80", "\xC2", "\xC2\x61", "\xE0\x9F\x80", "\xED\xA0\x80", "\xE2\x82",
                             "\xF0\x8F\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(IsUtf8(text)) << text;
    }
    EXPECT_EQ(ToUtf8("\x81\x9F\xFF"), "\xC2\x81\xC5\xB8\xC3\xBF");
}
// clang-format on

}  // namespace
}  // namespace quillara
