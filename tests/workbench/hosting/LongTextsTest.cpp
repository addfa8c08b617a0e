#include "workbench/hosting/LongTexts.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

#include "workbench/hosting/LongTextRegister.h"

namespace quillara {
namespace {

TEST(LongTexts, KeysTurnBack) {
    const std::string key = LongTextKey("Never-married");
    EXPECT_EQ(key.size(), 8U);
    EXPECT_EQ(key[0], '\x01');
    EXPECT_EQ(key.find_first_of(" ."), std::string::npos);
    EXPECT_EQ(LongTextKey("Never-married"), key);
    EXPECT_EQ(LongTextOf(key), "Never-married");
    EXPECT_EQ(LongTextKey("12345678"), "12345678");
    EXPECT_EQ(LongTextOf("\x01zzzzzzz"), "\x01zzzzzzz");
}

TEST(LongTexts, TextsGrowAnywhereAndNested) {
    const std::string inner = LongTextKey("marital status");
    const std::string outer = LongTextKey("Frequencies of " + inner);
    EXPECT_EQ(Replace8CharGrow("[" + outer + "] " + inner + inner),
              "[Frequencies of marital status] marital statusmarital status");
    EXPECT_EQ(Replace8CharGrow("no key \x01 here \x01zzzzzzz"), "no key \x01 here \x01zzzzzzz");
}

TEST(LongTexts, TakenKeysLeadToOthers) {
    LongTextRegister texts([](std::string_view) { return ~std::uint64_t{0}; });
    const std::string first = texts.KeyOf("the first long text");
    const std::string second = texts.KeyOf("the second long text");
    EXPECT_EQ(texts.Expand(second + first), "the second long textthe first long text");
    EXPECT_EQ(texts.KeyOf("the first long text"), first);
}

// clang-format off
TEST(LongTexts, GrowthEnds) {
    LongTextRegister texts([](std::string_view) { return std::uint64_t{0}; });
    const std::string itself = "\x01" "AAAAAAA" "\x01" "AAAAAAA";  // holds the key that it gets
    const std::string key = texts.KeyOf(itself);
    EXPECT_EQ(itself.substr(0, 8), key);
    EXPECT_LT(texts.Expand(key).size(), std::size_t{1} << 26);
}

TEST(LongTexts, BrokenTailsAreDropped) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},                                     {"abc", "abc"},
        {"Stra\xC3\x9F", "Stra\xC3\x9F"},             {"Stra\xC3", "Stra"},
        {"\xE2\x82\xAC", "\xE2\x82\xAC"},             {"x\xE2\x82", "x"},
        {"x\xF0\x9F\x98\x80", "x\xF0\x9F\x98\x80"},   {"x\xF0\x9F\x98", "x"},
        {"of \x01" "ABCDEFG", "of \x01" "ABCDEFG"},   {"of \x01" "ABC", "of "},
    };
    for (const auto& [text, whole] : cases) {
        EXPECT_EQ(WithoutBrokenTail(text), whole);
    }
}
// clang-format on

TEST(LongTexts, ThreadsAgree) {
    std::vector<std::jthread> threads;
    std::vector<std::vector<std::string>> keys(4);
    for (auto& mine : keys) {
        threads.emplace_back([&mine] {
            for (int i = 0; i < 2000; ++i) {
                const std::string text = "a text of every thread " + std::to_string(i);
                mine.push_back(LongTextKey(text));
                EXPECT_EQ(Replace8CharGrow(mine.back()), text);
            }
        });
    }
    threads.clear();
    EXPECT_EQ(std::set<std::string>(keys[0].begin(), keys[0].end()).size(), 2000U);
    EXPECT_EQ(std::set<std::vector<std::string>>(keys.begin(), keys.end()).size(), 1U);
}

}  // namespace
}  // namespace quillara
