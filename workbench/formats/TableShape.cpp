#include "workbench/formats/TableShape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <string_view>

#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/WrittenValue.h"

namespace quillara {
namespace {

constexpr std::array<std::string_view, 4> Separators = {",", ";", "\t", "|"};
constexpr std::array<std::string_view, 10> WordsOfTotals = {"total",  "totals", "grand total", "sum",   "sums",
                                                            "totale", "summe",  "gesamt",      "somme", "insgesamt"};

using RemarkList = std::vector<Remark>;

std::string CountOf(std::size_t count, std::size_t all, const std::string& things) {
    return std::to_string(count) + " of " + std::to_string(all) + ' ' + things;
}

void RemarkOnSingle(const DataTable& table, RemarkList& remarks) {
    if (table.Variables.size() != 1) {
        return;
    }
    const std::string& name = table.Variables.front().Name;
    const std::string text = "The file has a single variable, " + Quoted(name);
    const auto* found = std::ranges::find_if(
        Separators, [&name](std::string_view sign) { return name.find(sign) != std::string::npos; });
    if (found == Separators.end()) {
        remarks.push_back({"single-variable", text + '.',
                           "If there should be more, name the character between them in --separator."});
        return;
    }
    const std::string sign(*found == "\t" ? "tab" : *found);
    remarks.push_back({"single-variable",
                       text + ": cut at " + Quoted(sign) + ", most of its records have other numbers of fields.",
                       "See which, with --separator '" + sign + "'."});
}

void RemarkOnValues(const std::vector<std::string>& names, RemarkList& remarks) {
    const auto value =
        std::ranges::find_if(names, [](const std::string& name) { return ReadWrittenValue(name).has_value(); });
    if (value != names.end()) {
        remarks.push_back({"names-like-values",
                           "The first record is taken for names, but " + Quoted(*value) + " looks like a value.",
                           "Read a file without names with --no-header."});
    }
}

/// A single one may be that of row names.
void RemarkOnMissing(const std::vector<std::string>& names, RemarkList& remarks) {
    const auto missing = static_cast<std::size_t>(std::ranges::count(names, std::string()));
    if (missing > 1) {
        remarks.push_back(
            {"names-missing",
             CountOf(missing, names.size(), "variables") +
                 " have no name in the first record and are called by their places.",
             "See whether the names stand in another record: lines above them have to go from the file."});
    }
}

void RemarkOnRepeated(const std::vector<std::string>& names, const DataTable& table, RemarkList& remarks) {
    std::set<std::string_view> met;
    std::vector<std::string> renamed;
    for (std::size_t place = 0; place < names.size(); ++place) {
        if (!names[place].empty() && !met.insert(names[place]).second) {
            renamed.push_back(table.Variables[place].Name);
        }
    }
    if (!renamed.empty()) {
        remarks.push_back({"names-repeated",
                           std::to_string(renamed.size()) +
                               (renamed.size() == 1 ? " variable has" : " variables have") +
                               " the name of another and " + (renamed.size() == 1 ? "is" : "are") + " called " +
                               QuotedList(renamed) + '.',
                           "Give each a name of its own in the file to tell them apart."});
    }
}

bool HasNoValue(const Variable& variable) {
    return HoldsForAll(variable.Values, [&](double value) { return variable.IsMissing(value); });
}

bool IsWordOfTotals(std::string_view text) {
    const std::string small = InSmallLetters(text.substr(0, text.find_last_not_of(" :.") + 1));
    return std::ranges::find(WordsOfTotals, small) != WordsOfTotals.end();
}

/// The text of the last case, if no other case has it.
std::optional<std::string_view> TextOfLastAlone(const Variable& variable) {
    const double last = variable.Values.empty() ? variable.MissingCode : variable.Values[variable.Values.size() - 1];
    if (variable.Kind != ValueKind::Text || variable.IsMissing(last)) {
        return std::nullopt;
    }
    const std::string_view text = variable.Texts[static_cast<std::size_t>(last) - 1];
    const bool isAlone = IsWordOfTotals(text) && std::ranges::count(variable.Values, last) == 1;
    return isAlone ? std::optional(text) : std::nullopt;
}

/// Whether the last case has the sum of all others.
bool EndsWithSum(const Variable& variable) {
    constexpr double tolerance = 1e-9;
    double sum = 0;
    double size = 0;
    const std::size_t last = variable.Values.size() - 1;
    for (std::size_t row = 0; row < last; ++row) {
        const double value = variable.Values[row];
        sum += variable.IsMissing(value) ? 0 : value;
        size += variable.IsMissing(value) ? 0 : std::abs(value);
    }
    const double total = variable.Values[last];
    return size > 0 && !variable.IsMissing(total) && std::abs(total - sum) <= tolerance * size;
}

/// A last case without a text has the sums of a short table.
bool HasSumsAtEnd(const DataTable& table) {
    constexpr std::int32_t mostCases = 10000;
    constexpr std::int32_t fewestCases = 4;
    if (table.Cases < fewestCases || table.Cases > mostCases) {
        return false;
    }
    std::size_t numbers = 0;
    std::size_t sums = 0;
    for (const Variable& variable : table.Variables) {
        if (HasNoValue(variable)) {
            continue;
        }
        const bool isNumber = variable.Kind == ValueKind::Number;
        if (!isNumber && !variable.IsMissing(variable.Values[variable.Values.size() - 1])) {
            return false;
        }
        numbers += isNumber ? 1 : 0;
        sums += isNumber && EndsWithSum(variable) ? 1 : 0;
    }
    return sums > 0 && sums == numbers && numbers < table.Variables.size();
}

void RemarkOnTotals(const DataTable& table, RemarkList& remarks) {
    const std::string begin = "The last case looks like the totals of the others: ";
    const std::string counts = ". It counts as a case.";
    for (const Variable& variable : table.Variables) {
        if (const std::optional<std::string_view> text = TextOfLastAlone(variable); text && table.Cases > 2) {
            remarks.push_back({"totals-row", begin + Quoted(variable.Name) + " is " + Quoted(*text) + counts,
                               "Leave it out with --select '[" + variable.Name + "] <> \"" + std::string(*text) +
                                   "\"', or take it out of the file."});
            return;
        }
    }
    if (HasSumsAtEnd(table)) {
        remarks.push_back({"totals-row", begin + "its numbers are their sums" + counts, "Take it out of the file."});
    }
}

}  // namespace

std::vector<Remark> RemarksOnShape(const DataTable& table, const TableOrigin& origin) {
    RemarkList remarks;
    if (origin.IsDelimited) {
        RemarkOnSingle(table, remarks);
        RemarkOnValues(origin.Names, remarks);
    }
    RemarkOnMissing(origin.Names, remarks);
    RemarkOnRepeated(origin.Names, table, remarks);
    RemarkOnTotals(table, remarks);
    return remarks;
}

std::optional<Remark> RemarkOnEmptyVariables(const DataTable& table) {
    std::vector<std::string> empty;
    for (const Variable& variable : table.Variables) {
        if (HasNoValue(variable)) {
            empty.push_back(variable.Name);
        }
    }
    if (table.Cases == 0 || empty.empty()) {
        return std::nullopt;
    }
    return Remark{"columns-empty", CountOf(empty.size(), table.Variables.size(), "variables") +
                                       (empty.size() == 1 ? " has" : " have") +
                                       " no value at all: " + QuotedList(empty) + '.'};
}

}  // namespace quillara
