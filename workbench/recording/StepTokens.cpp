#include "workbench/recording/StepTokens.h"

#include <algorithm>

#include "host/LittleParser.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/recording/PythonText.h"

namespace quillara {
namespace {

constexpr std::string_view MissingName = "Missing";
constexpr std::string_view Joint = " | ";

constexpr char SmallLetterOf(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// As members compare names.
bool AreAlike(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, SmallLetterOf, SmallLetterOf);
}

/// Texts that a member takes as they are: those that begin with a control character are keys of others.
bool CanBeTaken(const std::string& text) {
    return !text.empty() && static_cast<unsigned char>(text.front()) >= ' ' && IsPlainPython(text) &&
           text.find('\0') == std::string::npos;
}

bool IsBareText(const std::string& text) {
    CLittleParser parser(1, text.c_str(), nullptr, 0);
    return parser.GetSymbol() == CLittleParser::BareText && parser.GetLastTextVal() == text &&
           parser.GetSymbol() == CLittleParser::End;
}

/// The categories that a text tells as "0 Female | 1 Male", by their places; empty when it can't be told where one
/// ends.
std::vector<std::string> NamesByPlace(std::string_view selections) {
    std::vector<std::string> names;
    while (!selections.empty()) {
        const std::size_t end = selections.find(Joint);
        const std::string_view entry = selections.substr(0, end);
        const std::size_t blank = entry.find(' ');
        const std::optional<int> place = WholeNumber(entry.substr(0, blank));
        if (blank == std::string_view::npos || !place || static_cast<std::size_t>(*place) != names.size()) {
            break;  // a category without cases stands before it
        }
        names.emplace_back(entry.substr(blank + 1));
        selections.remove_prefix(end == std::string_view::npos ? selections.size() : end + Joint.size());
    }
    return names;
}

}  // namespace

std::string AsToken(const std::string& text) {
    if (IsBareText(text)) {
        return text;
    }
    std::string quoted = "\"";
    for (const char sign : text) {
        quoted += sign == '"' ? "\"\"" : std::string(1, sign);
    }
    return quoted + '"';
}

std::optional<std::string> VariableToken(const std::vector<std::string>& rows, std::size_t row,
                                         const std::string& name) {
    const auto begins = [&name](const std::string& each) { return AreAlike(each.substr(0, name.size()), name); };
    const bool isFirst = std::ranges::find_if(rows, begins) == rows.begin() + static_cast<std::ptrdiff_t>(row);
    return isFirst && CanBeTaken(name) ? std::optional(AsToken(name)) : std::nullopt;
}

std::optional<int> PlaceOf(const ChosenCategory& chosen, bool goesByNumber) {
    if (chosen.Row || goesByNumber) {
        return chosen.Row ? chosen.Row : WholeNumber(chosen.Read);
    }
    const std::vector<std::string> names = NamesByPlace(chosen.Selections);
    const auto found = std::ranges::find(names, chosen.Read);
    return found == names.end() ? std::nullopt : std::optional(static_cast<int>(found - names.begin()));
}

std::optional<std::string> CategoryToken(const ChosenCategory& chosen) {
    const std::vector<std::string> names = NamesByPlace(chosen.Selections);
    const auto isRead = [&chosen](const std::string& name) { return AreAlike(name, chosen.Read); };
    const auto found = std::ranges::find_if(names, isRead);
    const bool isOfRow = !chosen.Row || found - names.begin() == *chosen.Row;
    const bool isOfList = chosen.Name.empty() || chosen.Name == chosen.Read;
    const bool isNamed = found != names.end() && *found == chosen.Read && isOfRow && isOfList;
    if (!isNamed || AreAlike(chosen.Read, MissingName) != chosen.IsMissing || !CanBeTaken(chosen.Read)) {
        return std::nullopt;
    }
    return AsToken(chosen.Read);
}

}  // namespace quillara
