#include "workbench/scripting/CategoryLookup.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateIntervals.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/PeriodName.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"
#include "workbench/data/WrittenValue.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

using FoundRow = std::optional<std::size_t>;

constexpr std::string_view MissingName = "Missing";
constexpr double SecondsOfHour = 3600.0;

/// Whether a row is shown with dates or times in place of numbers.
bool IsInDates(const CategoryList& list, const CategoryRow& row) {
    return row.Range && !list.HasLabels && IsTimeKind(list.Kind);
}

FoundRow FirstRow(const CategoryList& list, const std::function<bool(const CategoryRow&)>& matches) {
    const auto row = std::find_if(list.Rows.begin(), list.Rows.end(), matches);
    return row == list.Rows.end() ? FoundRow() : FoundRow(row - list.Rows.begin());
}

FoundRow MissingRow(const CategoryList& list, std::string_view text) {
    if (text != MissingName) {
        return std::nullopt;
    }
    return FirstRow(list, [](const CategoryRow& row) { return !row.Range; });
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

FoundRow RowNamedInDates(const CategoryList& list, std::string_view text) {
    return FirstRow(list, [&](const CategoryRow& row) { return NameForPeople(list, row) == text; });
}

/// "2024-02-29<x<=2024-03-31" of what is shown as 2024-03.
FoundRow RowNamedByBounds(const CategoryList& list, std::string_view text) {
    return FirstRow(list, [&](const CategoryRow& row) {
        return IsInDates(list, row) && NameByBounds(list.Kind, row.Name, row.Range->Lower, row.Range->Upper) == text;
    });
}

bool Admits(const RowRange& range, double value) {
    const bool isAbove = range.HasLower ? range.Lower <= value : range.Lower < value;
    const bool isBelow = range.HasUpper ? value <= range.Upper : value < range.Upper;
    return isAbove && isBelow;
}

bool IsSingleValue(const RowRange& range) {
    return range.HasLower && range.HasUpper && range.Lower == range.Upper;
}

/// The value that a text stands for among those of a variable.
std::optional<double> ValueOf(const CategoryList& list, std::string_view text) {
    std::optional<double> value;
    if (list.Kind == ValueKind::Date) {
        value = DaysFromText(text);
    } else if (list.Kind == ValueKind::TimeOfDay) {
        value = TimeFromText(text);
    } else if (list.Kind == ValueKind::DateTime) {
        value = SecondsFromDateTime(text);
    }
    return value ? value : DecimalNumber(text);
}

/// The row that has all dates of "2024-03", "2024-Q1" or the like, also that one from which or up to which there is no
/// bound. A single day is looked up as a value.
FoundRow RowOfPeriod(const CategoryList& list, std::string_view text) {
    const std::optional<DayRange> days = PeriodNamed(text);
    const bool hasDates = list.Kind == ValueKind::Date || list.Kind == ValueKind::DateTime;
    if (!days || !hasDates || DaysFromText(text)) {
        return std::nullopt;
    }
    const bool hasTimes = list.Kind == ValueKind::DateTime;
    const double first = hasTimes ? days->First * SecondsOfDay : days->First;
    const double last = hasTimes ? days->Behind * SecondsOfDay - 1 : days->Behind - 1;
    return FirstRow(list, [&](const CategoryRow& row) {
        const std::string name = row.Range ? NameForPeople(list, row) : std::string();
        return name == "to " + std::string(text) || name == "from " + std::string(text) ||
               (row.Range && Admits(*row.Range, first) && Admits(*row.Range, last));
    });
}

/// The texts behind labels, as the data have them.
FoundRow RowOfStoredText(const CategoryList& list, std::string_view text) {
    const auto stored = std::ranges::find(list.Texts, text);
    if (stored == list.Texts.end()) {
        return std::nullopt;
    }
    const auto value = static_cast<double>(stored - list.Texts.begin() + 1);
    return FirstRow(list, [value](const CategoryRow& row) { return row.Range && Admits(*row.Range, value); });
}

/// The number of a text means nothing to people; an interval of such numbers is asked for by its bounds, as they are
/// its name.
FoundRow AdmittingRow(const CategoryList& list, std::string_view text) {
    const std::optional<double> value = ValueOf(list, text);
    if (!value) {
        return std::nullopt;
    }
    const bool isText = list.Kind == ValueKind::Text;
    return FirstRow(list, [&](const CategoryRow& row) {
        return row.Range && !(isText && IsSingleValue(*row.Range)) && Admits(*row.Range, *value);
    });
}

/// The names of the rows; one that several rows have stands once, as it finds the first of them only.
std::vector<std::string> NamesOf(const CategoryList& list) {
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const CategoryRow& row : list.Rows) {
        if (std::string name = NameForPeople(list, row); seen.insert(name).second) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

/// What is wrong with the text itself, ahead of the list.
std::string Hint(const CategoryList& list, std::string_view text) {
    constexpr std::size_t lengthOfDay = 10;
    const std::string_view day = text.substr(0, lengthOfDay);
    const bool looksLikeDay = day.size() == lengthOfDay && day[4] == '-' && day[7] == '-' &&
                              std::ranges::count_if(day, [](char sign) { return '0' <= sign && sign <= '9'; }) == 8;
    if (looksLikeDay && IsTimeKind(list.Kind) && !DaysFromText(day)) {
        return Quoted(day) + " is no day of the calendar. ";
    }
    const bool isQuoted =
        text.size() > 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
    const std::string inner(isQuoted ? text.substr(1, text.size() - 2) : text);
    return isQuoted && NamedRowInAnyCase(list, inner) ? "A category stands without quotes: " + inner + ". " : "";
}

std::string Refusal(const CategoryList& list, std::string_view text) {
    const std::string line =
        Hint(list, text) + "The variable " + Quoted(list.Variable) + " has no category " + Quoted(text) + " now; ";
    if (list.Rows.empty()) {
        return line + "its list of categories is empty.";
    }
    const std::vector<std::string> names = NamesOf(list);
    const std::optional<std::string> meant = Suggestion(text, names);
    return line + (meant ? "did you mean " + Quoted(*meant) + "? The list shows: " : "the list shows: ") +
           QuotedList(names) + ".";
}

/// Whether a day, a time or a period picked a row of more than a day or an hour that isn't shown as a period of the
/// calendar but by its bounds.
bool PicksDates(const CategoryList& list, std::string_view text, std::size_t row) {
    const CategoryRow& chosen = list.Rows[row];
    const bool isNamed = NumberedRow(list, text) || NamedRowInAnyCase(list, text) || RowNamedInDates(list, text) ||
                         RowNamedByBounds(list, text);
    const double smallest = list.Kind == ValueKind::Date ? 1.0 : SecondsOfHour;
    return IsInDates(list, chosen) && !isNamed && chosen.Range->Upper - chosen.Range->Lower > smallest &&
           NameForPeople(list, chosen).find('<') != std::string::npos;
}

}  // namespace

std::string NameForPeople(const CategoryList& list, const CategoryRow& row) {
    return IsInDates(list, row) ? NameInDates(list.Kind, row.Name, row.Range->Lower, row.Range->Upper) : row.Name;
}

std::size_t FindCategory(const CategoryList& list, std::string_view text) {
    for (const auto find : {MissingRow, NumberedRow, NamedRow, NamedRowInAnyCase, RowNamedInDates, RowNamedByBounds,
                            RowOfPeriod, RowOfStoredText, AdmittingRow}) {
        if (const FoundRow row = find(list, text)) {
            return *row;
        }
    }
    throw ImpossibleStep(Refusal(list, text));
}

std::optional<Remark> RemarkOnEqualNames(const CategoryList& list, std::size_t taken, std::string_view text) {
    const std::string& name = list.Rows[taken].Name;
    if (name != text && WithoutLetterCase(name) != WithoutLetterCase(text)) {
        return std::nullopt;
    }
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < list.Rows.size(); ++row) {
        if (list.Rows[row].Name == name) {
            rows.push_back("#" + std::to_string(row));
        }
    }
    if (rows.size() < 2) {
        return std::nullopt;
    }
    return Remark{"equal-names",
                  std::to_string(rows.size()) + " categories of " + Quoted(list.Variable) + " are called " +
                      Quoted(name) + "; the step takes the one of row #" + std::to_string(taken) + ".",
                  "Rows go by their numbers too: " + QuotedList(rows) + "."};
}

std::optional<Remark> RemarkOnChoice(const CategoryList& list, std::string_view text, std::size_t row) {
    const CategoryRow& chosen = list.Rows[row];
    if (PicksDates(list, text, row)) {
        const bool hasDays = list.Kind != ValueKind::TimeOfDay;
        return Remark{"number-in-interval",
                      Quoted(list.Variable + '=' + std::string(text)) + " is the interval " +
                          Quoted(NameForPeople(list, chosen)) + '.',
                      std::string("For other intervals cut it with --categorize, by ") +
                          (hasDays ? "day, week, month, quarter, year or step:SIZE." : "step:SIZE.")};
    }
    const bool isNumber = list.Kind == ValueKind::Number && DecimalNumber(text).has_value();
    if (!isNumber || !chosen.Range || IsSingleValue(*chosen.Range) || NamedRowInAnyCase(list, text)) {
        return std::nullopt;
    }
    return Remark{"number-in-interval",
                  Quoted(list.Variable + '=' + std::string(text)) + " is the interval " +
                      Quoted(NameForPeople(list, chosen)) + '.',
                  "For single values name the variable in --categorical, or cut it with distinct."};
}

}  // namespace quillara
