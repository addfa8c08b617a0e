#include "workbench/formats/DelimitedText.h"

#include <gtest/gtest.h>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DecimalNumber.h"
#include "workbench/formats/Encoding.h"

namespace quillara {
namespace {

using Fields = std::vector<std::string>;

TEST(DelimitedText, SplitRecord) {
    EXPECT_EQ(SplitRecord(""), Fields{""});
    EXPECT_EQ(SplitRecord(" age , sex"), (Fields{"age", "sex"}));
    EXPECT_EQ(SplitRecord("a,,b,"), (Fields{"a", "", "b", ""}));
    EXPECT_EQ(SplitRecord("\"a,b\" ,  \"say \"\"x\"\"\",c\"d"), (Fields{"a,b", "say \"x\"", "c\"d"}));
    EXPECT_EQ(SplitRecord("a\nb,c"), (Fields{"a\nb", "c"}));
    EXPECT_EQ(SplitRecord("a;b,c", ';'), (Fields{"a", "b,c"}));
    EXPECT_THROW((void)SplitRecord("a,\"b"), DataError);
}

TEST(DelimitedText, RecordsKnowTheirLines) {
    const TemporaryFolder folder;
    const auto records = ReadDelimitedRecords(folder.Put("d.txt", "\na;b\r\n\"1\n\";2\n\n3; 4 \n"));
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].Fields, (Fields{"a", "b"}));
    EXPECT_EQ(records[0].Line, 2U);
    EXPECT_EQ(records[1].Line, 3U);
    EXPECT_EQ(records[2].Fields, (Fields{"3", "4"}));
    EXPECT_EQ(records[2].Line, 6U);
    EXPECT_THROW((void)ReadDelimitedRecords(folder.Path("none.csv")), DataError);
}

TEST(DecimalNumber, FollowsTheGrammarOfNumbers) {
    double value = 0;
    for (const char* text : {"7", "+7", "7.0", "70e-1", "0.07E+2", "007"}) {
        EXPECT_EQ(ReadDecimal(text, '.', value), DecimalOutcome::Number) << text;
        EXPECT_EQ(value, 7) << text;
    }
    for (const char* text : {"", "+", "7.", ".", "-.", "e5", ".e5", "7e", "7e+", "7 ", "1,5", "0x7", "inf", "nan",
                             "--7", "+-7", "7.0.0", "1e5.0", "1_000"}) {
        EXPECT_EQ(ReadDecimal(text, '.', value), DecimalOutcome::NoNumber) << text;
    }
    EXPECT_EQ(ReadDecimal("-,5", ',', value), DecimalOutcome::Number);
    EXPECT_EQ(value, -0.5);
    EXPECT_EQ(ReadDecimal("0.5", ',', value), DecimalOutcome::NoNumber);
    EXPECT_EQ(ReadDecimal("1.7976931348623157e308", '.', value), DecimalOutcome::Number);
    EXPECT_EQ(ReadDecimal("5e-324", '.', value), DecimalOutcome::Number);
    EXPECT_EQ(value, 5e-324);
    EXPECT_EQ(ReadDecimal("-1e-400", '.', value), DecimalOutcome::Number);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(ReadDecimal("-1.8e308", '.', value), DecimalOutcome::TooLarge);
    EXPECT_EQ(ReadDecimal("0e999", '.', value), DecimalOutcome::Number);
    EXPECT_EQ(ReadDecimal(std::string(400, '9'), '.', value), DecimalOutcome::TooLarge);
}

TEST(Encoding, IsUtf8OnlyWhenWellFormed) {
    for (const char* text :
         {"", "a", "\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(IsUtf8(text)) << text;
    }
    for (const char* text : {"\x80", "\xC0\x80", "\xC2",
                             "\xC2"
                             "a",
                             "\xE0\x9F\x80", "\xED\xA0\x80", "\xE2\x82", "\xF0\x8F\x80\x80", "\xF4\x90\x80\x80",
                             "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(IsUtf8(text)) << text;
    }
    EXPECT_EQ(ToUtf8("\x81\x9F\xFF"), "\xC2\x81\xC5\xB8\xC3\xBF");
}

}  // namespace
}  // namespace quillara
