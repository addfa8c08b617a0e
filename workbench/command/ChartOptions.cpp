#include "workbench/command/ChartOptions.h"

#include <algorithm>

#include "workbench/command/NamedVariables.h"
#include "workbench/data/WordTable.h"
#include "workbench/documents/BoxTypes.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr int ShortestSide = 120;  // pixels
constexpr int LongestSide = 10000;

// clang-format off
constexpr WordTable<ChartFormat, 3> ChartFormatWords{{
    {"svg", ChartFormat::Svg},
    {"png", ChartFormat::Png},
    {"pdf", ChartFormat::Pdf},
}};

constexpr WordTable<bool, 2> DarkWords{{
    {"light", false},
    {"dark",  true},
}};
// clang-format on

/// The check boxes by the words of the command line.
constexpr auto BoxTypeWords = [] {
    WordTable<int, BoxTypes.size()> words;
    for (std::size_t i = 0; i < BoxTypes.size(); ++i) {
        words[i] = {BoxTypes[i].Word, BoxTypes[i].CheckBox};
    }
    return words;
}();

/// The first colon outside double quotes, or the end.
std::size_t ColonIn(std::string_view text) {
    bool isQuoted = false;
    const auto isColon = [&isQuoted](char character) {
        isQuoted ^= character == '"';
        return character == ':' && !isQuoted;
    };
    return static_cast<std::size_t>(std::ranges::find_if(text, isColon) - text.begin());
}

std::vector<std::string> NamesOf(std::string_view text) {
    std::vector<std::string> names = ParseNames(text);
    CheckForRepeats({.Categorical = names, .Continuous = {}, .ReviewCategorical = {}, .ReviewContinuous = {}});
    return names;
}

int SideOf(std::string_view text) {
    const int side = WholeNumber(text).value_or(0);
    return side >= ShortestSide && side <= LongestSide ? side : 0;
}

}  // namespace

std::set<int> ParseBoxTypes(std::string_view text) {
    std::set<int> boxes;
    for (const std::string& name : ParseNames(text)) {
        boxes.insert(Choose(BoxTypeWords, name));
    }
    return boxes.empty() ? std::set{Choose(BoxTypeWords, "")} : boxes;
}

VariablePairs ParsePairs(std::string_view text) {
    const std::size_t colon = ColonIn(text);
    const std::string_view behind = text.substr(std::min(colon + 1, text.size()));
    if (ColonIn(behind) < behind.size()) {
        throw UsageError(Quoted(text) + " has several colons; a name with a colon stands in double quotes.");
    }
    VariablePairs pairs;
    pairs.Horizontal = NamesOf(text.substr(0, colon));
    pairs.Vertical = NamesOf(behind);
    if (pairs.Horizontal.empty() || pairs.Vertical.empty()) {
        throw UsageError(Quoted(text) +
                         " isn't of the form X1,X2:Y1,Y2; name a variable on each side of the colon; "
                         "a name with a colon stands in double quotes.");
    }
    return pairs;
}

ChartFormat ParseChartFormat(std::string_view text) {
    return Choose(ChartFormatWords, text);
}

bool ParseDark(std::string_view text) {
    return Choose(DarkWords, text);
}

std::pair<int, int> ParseSize(std::string_view text) {
    const std::size_t cross = std::min(text.find('x'), text.size());
    const int width = SideOf(text.substr(0, cross));
    const int height = cross < text.size() ? SideOf(text.substr(cross + 1)) : 0;
    if (width == 0 || height == 0) {
        throw UsageError(Quoted(text) + " is no size; write WIDTHxHEIGHT in pixels, each from 120 to 10000.");
    }
    return {width, height};
}

std::string_view FileEndOf(ChartFormat format) {
    return std::ranges::find(ChartFormatWords, format, &std::pair<std::string_view, ChartFormat>::second)->first;
}

}  // namespace quillara
