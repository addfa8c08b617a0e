#include "workbench/hosting/VariableNotation.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

constexpr std::string_view Blanks = " \t\r\n,;";
constexpr std::string_view EntryEnds = " \t\r\n,;|\"";

/// Numbers from the first to the last, both included.
struct Range {
    int First;
    int Last;
};

std::optional<int> WholeNumber(std::string_view text) {
    int number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && rest == text.data() + text.size() && !text.starts_with('-');
    return isWhole ? std::optional(number) : std::nullopt;
}

/// The numbers that a bare entry stands for; nothing when it is a name.
std::optional<Range> RangeIn(std::string_view entry) {
    const std::size_t dash = entry.find('-');
    const auto first = WholeNumber(entry.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : WholeNumber(entry.substr(dash + 1));
    return first && last ? std::optional(Range{*first, *last}) : std::nullopt;
}

std::string InQuotes(const std::string& name) {
    std::string quoted = "\"";
    for (const char sign : name) {
        quoted += sign == '"' ? "\"\"" : std::string(1, sign);
    }
    return quoted + '"';
}

std::string EntryOf(const DataTable& table, short number) {
    const std::string& name = table.Variables[static_cast<std::size_t>(number) - 1].Name;
    if (table.Find(name) != static_cast<std::size_t>(number) - 1) {
        return std::to_string(number);
    }
    const bool isPlain = !name.empty() && name.find_first_of(EntryEnds) == std::string::npos && !RangeIn(name);
    return isPlain ? name : InQuotes(name);
}

std::string TextOfList(const DataTable& table, const std::vector<short>& list) {
    std::string text;
    for (const short number : list) {
        text += (text.empty() ? "" : " ") + EntryOf(table, number);
    }
    return text;
}

void CheckNumber(const DataTable& table, int number) {
    if (number < 1 || static_cast<std::size_t>(number) > table.Variables.size()) {
        throw UsageError("There is no variable " + std::to_string(number) + ".");
    }
}

void AddRange(const DataTable& table, Range range, std::vector<short>& list) {
    CheckNumber(table, range.First);
    CheckNumber(table, range.Last);
    if (range.Last < range.First) {
        throw UsageError("The range of variables " + std::to_string(range.First) + "-" + std::to_string(range.Last) +
                         " runs backwards.");
    }
    for (int number = range.First; number <= range.Last; ++number) {
        list.push_back(static_cast<short>(number));
    }
}

/// The variable of exactly a name, or of the name but for the case of its letters.
void AddName(const DataTable& table, std::string_view name, std::vector<short>& list) {
    const auto isMeant = [name](const Variable& variable) { return EqualButForLetterCase(variable.Name, name); };
    auto found = std::ranges::find(table.Variables, name, &Variable::Name);
    found = found != table.Variables.end() ? found : std::ranges::find_if(table.Variables, isMeant);
    if (found == table.Variables.end()) {
        throw UsageError("There is no variable " + Quoted(name) + ".");
    }
    list.push_back(static_cast<short>(found - table.Variables.begin() + 1));
}

/// Takes a name in quotes off the text.
std::string TakeQuoted(std::string_view& rest) {
    std::string name;
    for (rest.remove_prefix(1); !rest.empty(); rest.remove_prefix(1)) {
        if (rest.front() == '"') {
            rest.remove_prefix(1);
            if (!rest.starts_with('"')) {
                return name;
            }
        }
        name += rest.front();
    }
    throw UsageError("A name in quotes has no closing quote.");
}

/// Takes an entry off the text.
void TakeEntry(const DataTable& table, std::string_view& rest, std::vector<short>& list) {
    if (rest.front() == '"') {
        AddName(table, TakeQuoted(rest), list);
        return;
    }
    const std::string_view entry = rest.substr(0, rest.find_first_of(EntryEnds));
    rest.remove_prefix(entry.size());
    if (const auto range = RangeIn(entry)) {
        AddRange(table, *range, list);
    } else {
        AddName(table, entry, list);
    }
}

}  // namespace

std::string TextOfLists(const DataTable& table, const TwoLists& lists) {
    const std::string first = TextOfList(table, lists[0]);
    const std::string second = TextOfList(table, lists[1]);
    return second.empty() ? first : first + (first.empty() ? "| " : " | ") + second;
}

TwoLists ListsIn(const DataTable& table, std::string_view text) {
    TwoLists lists;
    std::size_t list = 0;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
        if (text.empty()) {
            return lists;
        }
        if (text.front() != '|') {
            TakeEntry(table, text, lists[list]);
            continue;
        }
        text.remove_prefix(1);
        if (++list == lists.size()) {
            throw UsageError("There are two lists of variables, with one bar between them.");
        }
    }
}

void CheckForRepeats(const DataTable& table, const TwoLists& lists) {
    std::set<short> seen;
    for (const std::vector<short>& list : lists) {
        for (const short number : list) {
            if (!seen.insert(number).second) {
                const std::string& name = table.Variables[static_cast<std::size_t>(number) - 1].Name;
                throw UsageError("The variable " + Quoted(name) + " is given twice.");
            }
        }
    }
}

}  // namespace quillara
