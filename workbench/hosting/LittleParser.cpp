#include "host/LittleParser.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view Separators = "|:,;";
constexpr std::string_view NumberEnds = " \t\r\n|:,;";

/// The decimal number that a text is, whole; false when it isn't one. Hexadecimal notation, infinities and NaN are
/// texts.
bool ReadNumber(std::string_view text, double& number) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    const bool isDecimal = first < text.size() && (text[first] == '.' || (text[first] >= '0' && text[first] <= '9'));
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return isDecimal && error == std::errc() && rest == text.data() + text.size();
}

/// Takes a text up to the closing quote, or to the end when there is none.
std::string TakeQuoted(std::string_view& rest) {
    std::string text;
    rest.remove_prefix(1);
    while (!rest.empty()) {
        if (rest.front() == '"') {
            rest.remove_prefix(1);
            if (!rest.starts_with('"')) {
                break;
            }
        }
        text += rest.front();
        rest.remove_prefix(1);
    }
    return text;
}

}  // namespace

CLittleParser::CLittleParser(int /*reserved1*/, const char* text, const char* /*reserved2*/, int /*reserved3*/)
    : Rest(text == nullptr ? "" : text) {}

int CLittleParser::GetSymbol() {
    Rest.remove_prefix(std::min(Rest.find_first_not_of(Blanks), Rest.size()));
    if (Rest.empty()) {
        return End;
    }
    if (Rest.front() == '"') {
        Text = TakeQuoted(Rest);
        return QuotedText;
    }
    if (Separators.find(Rest.front()) != std::string_view::npos) {
        Text = Rest.front();
        Rest.remove_prefix(1);
        return Text.front();
    }
    if (const std::string_view word = Rest.substr(0, Rest.find_first_of(NumberEnds)); ReadNumber(word, Real)) {
        Text = word;
        Rest.remove_prefix(word.size());
        return Number;
    }
    const std::string_view text = Rest.substr(0, Rest.find_first_of(Separators));
    Rest.remove_prefix(text.size());
    Text = text.substr(0, text.find_last_not_of(Blanks) + 1);
    return BareText;
}

int CLittleParser::GetLastNumber() const {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::trunc(Real), lowest, highest));
}
