#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/LittleParser.h"
#include "host/ScriptValues.h"
#include "platform/OwnedVariant.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/documents/WideText.h"

namespace quillara {
namespace {

template <typename... Items>
OwnedVariant List(Items... items) {
    std::vector<OwnedVariant> all;
    (all.push_back(std::move(items)), ...);
    return ListOf(std::move(all));
}

OwnedVariant Text(std::u16string_view text) {
    return OwnedVariant::OfText(text);
}

/// What a value is as another type, as text; the status when it can't be.
std::string Changed(const VARIANT& value, VariantType type) {
    OwnedVariant changed;
    if (const HRESULT status = VariantChangeType(*changed.Put(), value, type); !Succeeded(status)) {
        return status == DISP_E_OVERFLOW ? "overflow" : status == DISP_E_TYPEMISMATCH ? "mismatch" : "other";
    }
    EXPECT_EQ(changed.Get().Type, type);
    OwnedVariant text;
    EXPECT_EQ(VariantChangeType(*text.Put(), changed.Get(), VariantType::Text), S_OK);
    return NarrowText(ViewOf(text.Get().Text));
}

TEST(AutomationValues, AreChangedFromTypeToType) {
    const auto real = [](double value) { return OwnedVariant::OfReal(value); };
    const auto whole = [](int value) { return OwnedVariant::OfInteger(value); };
    // clang-format off
    const struct { OwnedVariant Value; VariantType Type; const char* Expected; } changes[] = {
        {real(2.5),                                VariantType::Integer,      "2"},
        {real(3.5),                                VariantType::Integer,      "4"},
        {real(-2147483648.4),                      VariantType::Integer,      "-2147483648"},
        {real(2147483647.5),                       VariantType::Integer,      "overflow"},
        {real(std::nan("")),                       VariantType::Integer,      "overflow"},
        {real(1e300),                              VariantType::SingleReal,   "overflow"},
        {real(0.1),                                VariantType::Text,         "0.1"},
        {real(9.2233720368547758e18),              VariantType::LongInteger,  "overflow"},
        {whole(70000),                             VariantType::ShortInteger, "overflow"},
        {whole(-1),                                VariantType::Byte,         "overflow"},
        {whole(3),                                 VariantType::Boolean,      "True"},
        {whole(0),                                 VariantType::Boolean,      "False"},
        {OwnedVariant(BooleanVariant(true)),       VariantType::Integer,      "-1"},
        {Text(u" 12 "),                            VariantType::Integer,      "12"},
        {Text(u"+1e2"),                            VariantType::Real,         "100"},
        {Text(u"12 13"),                           VariantType::Integer,      "mismatch"},
        {Text(u""),                                VariantType::Real,         "mismatch"},
        {Text(u"False"),                           VariantType::Boolean,      "False"},
        {OwnedVariant(),                           VariantType::Integer,      "0"},
        {OwnedVariant(),                           VariantType::Text,         ""},
        {OwnedVariant::OfObject(nullptr),          VariantType::Integer,      "mismatch"},
        {List(whole(1)),                           VariantType::Text,         "mismatch"},
    };
    // clang-format on
    for (const auto& [value, type, expected] : changes) {
        EXPECT_EQ(Changed(value.Get(), type), expected) << static_cast<int>(type);
    }
}

TEST(AutomationValues, ReferencesAreFollowed) {
    std::int32_t number = 7;
    VARIANT reference;
    reference.Type = VariantType::Integer | VariantType::ByReference;
    reference.IntegerReference = &number;
    VARIANT outer;
    outer.Type = VariantType::Variant | VariantType::ByReference;
    outer.VariantReference = &reference;
    EXPECT_EQ(Changed(outer, VariantType::Text), "7");
    VariantClear(outer);
    EXPECT_EQ(number, 7);
}

TEST(AutomationValues, AFailedChangeLeavesTheTarget) {
    VARIANT target = Text(u"kept").Detach();
    EXPECT_EQ(VariantChangeType(target, target, VariantType::Integer), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(ViewOf(target.Text), u"kept");
    VariantClear(target);
    EXPECT_EQ(target.Type, VariantType::Empty);
}

TEST(AutomationValues, ListsAreCopiedWhole) {
    const OwnedVariant list = List(Text(u"sex"), List(OwnedVariant::OfInteger(3), Text(u"age")));
    OwnedVariant copy;
    ASSERT_EQ(VariantCopy(*copy.Put(), list.Get()), S_OK);
    EXPECT_NE(copy.Get().Array->Data[0].Text, list.Get().Array->Data[0].Text);
    EXPECT_EQ(ViewOf(copy.Get().Array->Data[1].Array->Data[1].Text), u"age");
}

TEST(ScriptValues, BecomeOneText) {
    const auto number = [](int value) { return OwnedVariant::OfInteger(value); };
    // clang-format off
    const struct { OwnedVariant Value; const char* Expected; } values[] = {
        {Text(u"1-3 7 | \"a b\""),                                            "1-3 7 | \"a b\""},
        {number(5),                                                           "5"},
        {OwnedVariant::OfReal(0.25),                                          "0.25"},
        {OwnedVariant(),                                                      ""},
        {List(Text(u"sex"), Text(u"a \"b\""), Text(u"2"), number(4)),         "sex \"a \"\"b\"\"\" \"2\" 4"},
        {List(List(Text(u"sex"), number(2)), List(), List(Text(u"größe"))),   "sex 2 |  | größe"},
        {List(),                                                              ""},
    };
    // clang-format on
    for (const auto& [value, expected] : values) {
        std::string text = "old";
        EXPECT_TRUE(VariantToTextList(value.Get(), text));
        EXPECT_EQ(text, expected);
    }
    for (const OwnedVariant& bad : {List(List(List(number(1)))), OwnedVariant::OfObject(nullptr)}) {
        std::string text = "old";
        EXPECT_FALSE(VariantToTextList(bad.Get(), text));
        EXPECT_EQ(text, "");
    }
}

/// The tokens of a text: codes and values.
std::string Tokens(const std::string& text) {
    CLittleParser parser(1, text.c_str(), nullptr, 0);
    std::string tokens;
    for (int code = parser.GetSymbol(); code != CLittleParser::End; code = parser.GetSymbol()) {
        tokens += code == CLittleParser::Number       ? "#" + parser.GetLastTextVal()
                  : code == CLittleParser::BareText   ? "<" + parser.GetLastTextVal() + ">"
                  : code == CLittleParser::QuotedText ? "'" + parser.GetLastTextVal() + "'"
                                                      : std::string(1, static_cast<char>(code));
    }
    return tokens;
}

TEST(LittleParser, TellsNumbersTextsAndSeparators) {
    // clang-format off
    const struct { const char* Text; const char* Tokens; } texts[] = {
        {"",                        ""},
        {"  \t ",                   ""},
        {"2",                       "#2"},
        {"\"2\"",                   "'2'"},
        {"2: Male",                 "#2:<Male>"},
        {" 1 2.5 -3e2 +4 .5 ",      "#1#2.5#-3e2#+4#.5"},
        {"Never married",           "<Never married>"},
        {"Never married  | x",      "<Never married>|<x>"},
        {"18-25",                   "<18-25>"},
        {"1-3 7",                   "<1-3 7>"},
        {"a;b,c",                   "<a>;<b>,<c>"},
        {"\"a \"\"b\"\" c\" d",     "'a \"b\" c'<d>"},
        {"\"open",                  "'open'"},
        {"\"\"",                    "''"},
        {"5\" x",                   "<5\" x>"},
        {"0x10 inf nan 1e999",      "<0x10 inf nan 1e999>"},
        {"- . -.",                  "<- . -.>"},
        {"\xC3\x84rger",            "<\xC3\x84rger>"},
    };
    // clang-format on
    for (const auto& [text, tokens] : texts) {
        EXPECT_EQ(Tokens(text), tokens) << text;
    }
}

TEST(LittleParser, CutsNumbersToTheLimitsOfWholeOnes) {
    CLittleParser parser(1, "-2.9 1e10 -1e10", nullptr, 0);
    for (const int expected : {-2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        parser.GetSymbol();
        EXPECT_EQ(parser.GetLastNumber(), expected);
    }
    EXPECT_EQ(parser.GetLastDouble(), -1e10);
}

TEST(WideText, GoesThereAndBack) {
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        std::u16string text;
        for (unsigned length = random() % 6; length > 0; --length) {
            const char32_t point = random() % 0x110000;
            if (point < 0x10000 && (point < 0xD800 || point >= 0xE000)) {
                text += static_cast<char16_t>(point);
            } else if (point >= 0x10000) {
                text += {static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)),
                         static_cast<char16_t>(0xDC00 + (point & 0x3FF))};
            }
        }
        EXPECT_EQ(WideText(NarrowText(text)), text);
    }
    EXPECT_EQ(NarrowText(u"a\xD800z\xDC00"), "a\uFFFDz\uFFFD");
}

}  // namespace
}  // namespace quillara
