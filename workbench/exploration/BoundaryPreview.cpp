#include "workbench/exploration/BoundaryPreview.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "host/TextFunctions.h"

namespace quillara {
namespace {

constexpr std::size_t MostBoundaries = 99;
constexpr std::size_t MostShown = 8;  // ranges
constexpr std::size_t ShownAtEachEnd = 3;
constexpr int ListNumberMode = 5;

std::vector<std::string> WordsIn(std::string_view typed) {
    const std::string separators{' ', GetListSep()};
    std::vector<std::string> words;
    for (std::size_t begin = typed.find_first_not_of(separators); begin != std::string_view::npos;) {
        const std::size_t end = typed.find_first_of(separators, begin);
        words.emplace_back(typed.substr(begin, end - begin));
        begin = typed.find_first_not_of(separators, end);
    }
    return words;
}

std::optional<double> NumberIn(const std::string& word) {
    double number = 0;
    const bool isNumber = GetDouble(ListNumberMode, word.c_str(), static_cast<int>(word.size()), &number) == 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Why a word is no number, and how to write one.
std::string NoNumber(const std::string& word) {
    const auto commas = std::ranges::count(word, ',');
    if (commas == 0) {
        return word + " is not a number";
    }
    std::string pointed = word;
    std::ranges::replace(pointed, ',', '.');
    std::string plain = word;
    std::erase(plain, ',');
    const bool isEither = commas == 1 && NumberIn(pointed) && NumberIn(plain) && NumberIn(pointed) != NumberIn(plain);
    return isEither ? word + " can be " + pointed + " or " + plain + ": write one of these"
                    : word + " is not a number: separate numbers by blanks or " + GetListSep();
}

/// What is wrong with the words as boundaries; empty: nothing.
std::string FaultIn(const std::vector<std::string>& words) {
    std::optional<double> before;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto number = NumberIn(words[i]);
        if (!number) {
            const bool hasLineFeed = words[i].find('\n') != std::string::npos;
            return hasLineFeed ? "one line only: a new line separates nothing" : NoNumber(words[i]);
        }
        if (before && *before >= *number) {
            return "after " + words[i - 1] + ": " + words[i] + " is not greater";
        }
        before = number;
    }
    return words.size() > MostBoundaries ? "too many: " + std::to_string(words.size()) + " values, 99 at most" : "";
}

/// The range that ends at a boundary; the last one is open.
std::string RangeAt(const std::vector<std::string>& words, std::size_t place) {
    const std::string lower = place > 0 ? words[place - 1] + "<x" : "x";
    return place < words.size() ? lower + "<=" + words[place] : lower;
}

}  // namespace

std::string BoundaryPreview(std::string_view typed) {
    std::vector<std::string> words = WordsIn(typed);
    if (std::string fault = FaultIn(words); words.empty() || !fault.empty()) {
        return fault;
    }
    bool hasCommas = false;
    for (std::string& word : words) {
        hasCommas = hasCommas || word.find(',') != std::string::npos;
        std::ranges::replace(word, ',', '.');
    }
    const std::string note = hasCommas ? "; a comma is the decimal point" : "";
    const bool isLong = words.size() + 1 > MostShown;
    std::string preview;
    for (std::size_t i = 0; i <= words.size(); ++i) {
        const bool isLeftOut = isLong && i >= ShownAtEachEnd && i + ShownAtEachEnd <= words.size();
        if (!isLeftOut) {
            preview += (i == 0 ? "" : ", ") + RangeAt(words, i);
        } else if (i == ShownAtEachEnd) {
            preview += ", ...";
        }
    }
    return (isLong ? preview + " (" + std::to_string(words.size() + 1) + " ranges)" : preview) + note;
}

}  // namespace quillara
