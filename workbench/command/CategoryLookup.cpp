#include "workbench/command/CategoryLookup.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>

#include "workbench/command/LetterCase.h"
#include "workbench/command/Numbers.h"
#include "workbench/command/QuotedText.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

using FoundRow = std::optional<std::size_t>;

constexpr std::string_view MissingName = "Missing";

enum Method : int { Distinct = 0, Step = 3, Integer = 4 };

FoundRow FirstRow(const CategoryList& list, const std::function<bool(const CategoryRow&)>& matches) {
    const auto row = std::find_if(list.Rows.begin(), list.Rows.end(), matches);
    return row == list.Rows.end() ? FoundRow() : FoundRow(row - list.Rows.begin());
}

FoundRow MissingRow(const CategoryList& list, std::string_view text) {
    if (text != MissingName) {
        return std::nullopt;
    }
    return FirstRow(list, [](const CategoryRow& row) { return row.IsMissing; });
}

FoundRow NumberedRow(const CategoryList& list, std::string_view text) {
    if (!text.starts_with('#')) {
        return std::nullopt;
    }
    const std::optional<int> row = WholeNumber(text.substr(1));
    if (!row || static_cast<std::size_t>(*row) >= list.Rows.size()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(*row);
}

FoundRow NamedRow(const CategoryList& list, std::string_view text) {
    return FirstRow(list, [&](const CategoryRow& row) { return row.Name == text; });
}

FoundRow NamedRowInAnyCase(const CategoryList& list, std::string_view text) {
    const std::wstring wanted = WithoutLetterCase(text);
    return FirstRow(list, [&](const CategoryRow& row) { return WithoutLetterCase(row.Name) == wanted; });
}

/// Whether a drill step on the row would keep a case with this value.
bool Admits(int method, const CategoryRow& row, double value) {
    switch (method) {
        case Distinct:
        case Integer:
            return value == row.Upper;
        case Step:
            return row.Lower <= value && value < row.Upper;
        default:
            return row.Lower < value && value <= row.Upper;
    }
}

FoundRow AdmittingRow(const CategoryList& list, std::string_view text) {
    const std::optional<double> value = DecimalNumber(text);
    const bool wordsOnly = list.IsText && (list.Method == Distinct || list.Method == Integer);
    if (!value || wordsOnly) {
        return std::nullopt;
    }
    return FirstRow(list, [&](const CategoryRow& row) { return !row.IsMissing && Admits(list.Method, row, *value); });
}

/// The names of the rows; one that several rows have stands once, as it finds the first of them only.
std::vector<std::string> NamesOf(const CategoryList& list) {
    std::vector<std::string> names;
    std::set<std::string_view> seen;
    for (const CategoryRow& row : list.Rows) {
        if (seen.insert(row.Name).second) {
            names.push_back(row.Name);
        }
    }
    return names;
}

std::string Refusal(const CategoryList& list, std::string_view text) {
    const std::string line = "The variable " + Quoted(list.Variable) + " has no category " + Quoted(text) + " now; ";
    if (list.Rows.empty()) {
        return line + "its list of categories is empty.";
    }
    return line + "the list shows: " + QuotedList(NamesOf(list)) + ".";
}

}  // namespace

std::size_t FindCategory(const CategoryList& list, std::string_view text) {
    for (const auto find : {MissingRow, NumberedRow, NamedRow, NamedRowInAnyCase, AdmittingRow}) {
        if (const FoundRow row = find(list, text)) {
            return *row;
        }
    }
    throw DataError(Refusal(list, text));
}

}  // namespace quillara
