#include "workbench/formats/OddCases.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/WrittenValue.h"
#include "workbench/formats/NumberNotation.h"

namespace quillara {
namespace {

constexpr std::array<std::string_view, 11> WordsOfTotals = {
    "total", "totals", "grand total", "overall", "sum", "sums", "totale", "summe", "gesamt", "somme", "insgesamt"};
constexpr std::array<std::string_view, 6> WordsOfNotes = {"source", "note",      "footnote",
                                                          "quelle", "anmerkung", "fußnote"};
constexpr std::size_t MostNotes = 10;

using RemarkList = std::vector<Remark>;

bool IsMissingAt(const Variable& variable, std::size_t row) {
    return variable.IsMissing(variable.Values[row]);
}

std::string_view TextAt(const Variable& variable, std::size_t row) {
    return variable.Texts[static_cast<std::size_t>(variable.Values[row]) - 1];
}

/// How to leave out the last cases: by a variable that has a value in all others and in none of them.
std::string WaysWithoutLast(const DataTable& table, std::size_t last) {
    const std::string them = last == 1 ? "it" : "them";
    const std::size_t first = static_cast<std::size_t>(table.Cases) - last;
    for (const Variable& variable : table.Variables) {
        std::size_t row = 0;
        while (row < first + last && IsMissingAt(variable, row) == (row >= first)) {
            ++row;
        }
        if (row == first + last) {
            return "Leave " + them + " out with --select 'not missing([" + variable.Name + "])', or take " + them +
                   " out of the file.";
        }
    }
    return "Take " + them + " out of the file.";
}

/// A text that says that its cases are the totals of others.
struct WordFound {
    const Variable* Named = nullptr;
    std::string_view Text{};
    std::size_t Cases = 0;
    std::size_t First = 0;
};

std::optional<WordFound> WordIn(const Variable& variable) {
    for (std::size_t code = 1; code <= variable.Texts.size(); ++code) {
        if (!IsWordOfTotals(variable.Texts[code - 1])) {
            continue;
        }
        const auto value = static_cast<double>(code);
        const auto cases = static_cast<std::size_t>(std::ranges::count(variable.Values, value));
        if (cases > 0) {
            std::size_t first = 0;
            while (variable.Values[first] != value) {
                ++first;
            }
            return WordFound{&variable, variable.Texts[code - 1], cases, first};
        }
    }
    return std::nullopt;
}

Remark OnWord(const WordFound& word, std::size_t cases) {
    const std::string is = Quoted(word.Named->Name) + " is " + Quoted(word.Text);
    const std::string which = word.First + 1 == cases ? "The last case" : "Case " + std::to_string(word.First + 1);
    const std::string text = word.Cases == 1
                                 ? which + " looks like the totals of the others: " + is + ". It counts as a case."
                                 : std::to_string(word.Cases) + " cases look like the totals of others: " + is +
                                       " there. They count as cases.";
    const std::string them = word.Cases == 1 ? "it" : "them";
    return {.Code = "totals-row",
            .Text = text,
            .Advice = "Leave " + them + " out with --select '[" + word.Named->Name + "] <> \"" +
                      std::string(word.Text) + "\"', or take " + them + " out of the file.",
            .Case = word.First};
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
        if (HoldsForAll(variable.Values, [&](double value) { return variable.IsMissing(value); })) {
            continue;
        }
        const bool isNumber = variable.Kind == ValueKind::Number;
        if (!isNumber && !IsMissingAt(variable, variable.Values.size() - 1)) {
            return false;
        }
        numbers += isNumber ? 1 : 0;
        sums += isNumber && EndsWithSum(variable) ? 1 : 0;
    }
    return sums > 0 && sums == numbers && numbers < table.Variables.size();
}

void RemarkOnTotals(const DataTable& table, RemarkList& remarks) {
    const auto cases = static_cast<std::size_t>(table.Cases);
    for (const Variable& variable : table.Variables) {
        const std::optional<WordFound> word = variable.Kind == ValueKind::Text ? WordIn(variable) : std::nullopt;
        if (word && cases > word->Cases + 1) {
            remarks.push_back(OnWord(*word, cases));
            return;
        }
    }
    if (HasSumsAtEnd(table)) {
        remarks.push_back({.Code = "totals-row",
                           .Text = "The last case looks like the totals of the others: its numbers are their sums. It "
                                   "counts as a case.",
                           .Advice = WaysWithoutLast(table, 1),
                           .Case = cases - 1});
    }
}

bool LooksLikeNote(std::string_view text) {
    const bool hasSign = text.starts_with('*') || text.starts_with('(') || text.starts_with("©") ||
                         (text.size() > 1 && text[0] >= '0' && text[0] <= '9' && text[1] == ')');
    const std::string small = InSmallLetters(text);
    return hasSign || std::ranges::any_of(WordsOfNotes, [&](std::string_view word) { return small.starts_with(word); });
}

/// The values of a case: none, one text that looks like a note, or others.
enum class RowLook { Empty, Note, Case };

RowLook LookOfRow(const DataTable& table, std::size_t row) {
    const Variable* found = nullptr;
    for (const Variable& variable : table.Variables) {
        if (!IsMissingAt(variable, row)) {
            if (found != nullptr || variable.Kind != ValueKind::Text) {
                return RowLook::Case;
            }
            found = &variable;
        }
    }
    if (found == nullptr) {
        return RowLook::Empty;
    }
    return LooksLikeNote(TextAt(*found, row)) ? RowLook::Note : RowLook::Case;
}

void RemarkOnNotes(const DataTable& table, RemarkList& remarks) {
    const auto cases = static_cast<std::size_t>(table.Cases);
    std::size_t notes = 0;
    std::size_t last = 0;
    while (last < cases && notes <= MostNotes && table.Variables.size() > 1) {
        const RowLook look = LookOfRow(table, cases - last - 1);
        if (look == RowLook::Case) {
            break;
        }
        notes += look == RowLook::Note ? 1 : 0;
        ++last;
    }
    if (last == 0 || last == cases || notes > MostNotes) {
        return;
    }
    const bool isOne = last == 1;
    const std::string these = isOne ? "The last case" : "The last " + std::to_string(last) + " cases";
    const std::string counts = isOne ? " It counts as a case." : " They count as cases.";
    remarks.push_back(
        {.Code = notes == 0 ? "cases-empty" : "notes-below",
         .Text = these +
                 (notes == 0 ? (isOne ? " has no value at all." : " have no value at all.")
                             : (isOne ? " looks like a note below the table." : " look like notes below the table.")) +
                 counts,
         .Advice = WaysWithoutLast(table, last),
         .Case = cases - 1});
}

bool AreNames(const DataTable& table, std::size_t row, const std::vector<std::string>& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Variable& variable = table.Variables[i];
        const bool isNamed = !names[i].empty();
        if (IsMissingAt(variable, row) == isNamed || (isNamed && TextAt(variable, row) != names[i])) {
            return false;
        }
    }
    return true;
}

/// Files that were put one behind another have their names within.
void RemarkOnNamesAgain(const DataTable& table, const std::vector<std::string>& names, RemarkList& remarks) {
    const auto unnamed = static_cast<std::size_t>(std::ranges::count(names, std::string()));
    const bool mayBe =
        names.size() > unnamed + 1 &&
        std::ranges::equal(table.Variables, names, [](const Variable& variable, const std::string& name) {
            return name.empty() || (variable.Kind == ValueKind::Text &&
                                    std::ranges::find(variable.Texts, name) != variable.Texts.end());
        });
    std::size_t found = 0;
    std::size_t first = 0;
    for (std::size_t row = static_cast<std::size_t>(mayBe ? table.Cases : 0); row-- > 0;) {
        if (AreNames(table, row, names)) {
            first = row;
            ++found;
        }
    }
    if (found > 0) {
        remarks.push_back({.Code = "names-again",
                           .Text = (found == 1 ? "1 case is" : std::to_string(found) + " cases are") +
                                   " the line of names once more, the first of them case " + std::to_string(first + 1) +
                                   ". All variables are texts for it.",
                           .Advice = "Take these lines out of the file.",
                           .Case = first});
    }
}

bool IsValue(const std::string& text) {
    return ReadWrittenValue(text).has_value() || FindNotation({text}, '.').Finding != NotationFinding::None;
}

/// Whether a variable's first text is the only one that is no value.
bool IsSpoiled(const Variable& variable) {
    constexpr std::size_t fewest = 2;
    if (variable.Kind != ValueKind::Text || IsMissingAt(variable, 0) || variable.Texts.size() < fewest) {
        return false;
    }
    const double first = variable.Values[0];
    if (IsValue(std::string(TextAt(variable, 0)))) {
        return false;
    }
    for (std::size_t code = 1; code <= variable.Texts.size(); ++code) {
        if (static_cast<double>(code) != first && !IsValue(variable.Texts[code - 1])) {
            return false;
        }
    }
    return std::ranges::count(variable.Values, first) == 1;
}

}  // namespace

bool IsWordOfTotals(std::string_view text) {
    constexpr std::size_t longest = 16;
    if (text.size() > longest) {
        return false;
    }
    const std::string small = InSmallLetters(text.substr(0, text.find_last_not_of(" :.") + 1));
    return std::ranges::find(WordsOfTotals, small) != WordsOfTotals.end();
}

std::vector<Remark> RemarksOnOddCases(const DataTable& table, const std::vector<std::string>& names) {
    RemarkList remarks;
    RemarkOnNamesAgain(table, names, remarks);
    RemarkOnTotals(table, remarks);
    RemarkOnNotes(table, remarks);
    return remarks;
}

std::vector<std::string> SpoiledByFirstCase(const DataTable& table) {
    constexpr std::int32_t fewestCases = 3;
    std::vector<std::string> spoiled;
    std::size_t gaps = 0;
    for (const Variable& variable : table.Variables) {
        if (table.Cases < fewestCases) {
            return {};
        }
        const bool isGap = IsMissingAt(variable, 0);
        if (!isGap && variable.Kind != ValueKind::Text) {
            return {};
        }
        gaps += isGap ? 1 : 0;
        if (IsSpoiled(variable)) {
            spoiled.push_back(variable.Name);
        }
    }
    return spoiled.size() > 1 || gaps > 0 ? spoiled : std::vector<std::string>();
}

std::vector<Remark> RemarksOnSecondNames(const DataTable& table, const std::vector<std::string>& spoiled,
                                         std::size_t throughNames) {
    if (spoiled.empty()) {
        return {};
    }
    const auto named = std::ranges::find(table.Variables, spoiled.front(), &Variable::Name);
    const std::string fromLine = "Take the line out of the file";
    const std::string skip = std::to_string(throughNames);
    return {{.Code = "second-names",
             .Text = "The first case looks like a second line of names or units: " + Quoted(named->Name) + " is " +
                     Quoted(TextAt(*named, 0)) + " there and a value in all other cases. It makes texts of " +
                     QuotedList(spoiled) + '.',
             .Advice = throughNames == 0 ? fromLine + '.'
                                         : fromLine + ", or take the names from it with --skip " + skip +
                                               " (skip=" + skip + " in Python)."}};
}

void DropObeyed(std::vector<Remark>& remarks, const std::vector<CaseResult>& selection) {
    std::erase_if(remarks, [&](const Remark& remark) {
        return remark.Case && *remark.Case < selection.size() && selection[*remark.Case] != CaseResult::Use;
    });
}

}  // namespace quillara
