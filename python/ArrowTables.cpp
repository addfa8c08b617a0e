#include "python/ArrowTables.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "python/ArrowStream.h"
#include "python/ValueCategories.h"
#include "workbench/data/DateTimes.h"

using namespace quillara;

namespace {

constexpr double MicrosecondsOfSecond = 1e6;

/// A buffer, of a vector or a text, that others may keep.
template <typename Items>
std::shared_ptr<const void> Kept(Items items) {
    const auto kept = std::make_shared<const Items>(std::move(items));
    return {kept, kept->data()};
}

/// One bit a case, set where there is a value; nothing where no value is missing.
void NoteGaps(ArrowColumn& column, auto isGap) {
    std::vector<std::uint8_t> bits((column.Length + 7) / 8);
    for (std::size_t i = 0; i < column.Length; ++i) {
        const bool isPresent = !isGap(i);
        column.Gaps += isPresent ? 0 : 1;
        bits[i / 8] |= static_cast<std::uint8_t>(isPresent ? 1U << (i % 8) : 0U);
    }
    column.Buffers.push_back(column.Gaps == 0 ? nullptr : Kept(std::move(bits)));
}

/// A column of this format, with its gaps and no values yet.
ArrowColumn Begun(std::string name, std::string format, std::size_t length, auto isGap) {
    ArrowColumn column{std::move(name), std::move(format), length, 0, {}};
    NoteGaps(column, isGap);
    return column;
}

/// All texts have `size` bytes together.
template <typename Offset, typename TextAt>
void AddTexts(ArrowColumn& column, std::size_t size, TextAt textAt) {
    std::vector<Offset> offsets;
    offsets.reserve(column.Length + 1);
    offsets.push_back(0);
    std::string bytes;
    bytes.reserve(size);
    for (std::size_t i = 0; i < column.Length; ++i) {
        bytes += textAt(i);
        offsets.push_back(static_cast<Offset>(bytes.size()));
    }
    column.Buffers.push_back(Kept(std::move(offsets)));
    column.Buffers.push_back(Kept(std::move(bytes)));
}

/// `textAt` gives the text of a case, an empty one for a gap.
ArrowColumn TextColumn(std::string name, std::size_t length, auto isGap, auto textAt) {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < length; ++i) {
        bytes += textAt(i).size();
    }
    const bool isLarge = bytes > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    ArrowColumn column = Begun(std::move(name), isLarge ? "U" : "u", length, isGap);
    isLarge ? AddTexts<std::int64_t>(column, bytes, textAt) : AddTexts<std::int32_t>(column, bytes, textAt);
    return column;
}

ArrowColumn TextColumn(std::string name, const std::vector<std::string>& texts) {
    return TextColumn(
        std::move(name), texts.size(), [](std::size_t) { return false; },
        [&texts](std::size_t i) -> std::string_view { return texts[i]; });
}

ArrowColumn CategoryColumn(const Variable& variable) {
    ValueCategories categories = CategoriesOf(variable);
    const auto& places = categories.Places;
    ArrowColumn column = Begun(variable.Name, "i", places.size(), [&places](std::size_t i) { return places[i] < 0; });
    column.Buffers.push_back(Kept(std::move(categories.Places)));
    column.Dictionary = std::make_shared<const ArrowColumn>(TextColumn("", categories.Names));
    return column;
}

/// The column of a variable whose cases have values of another type than double: `convert` gives them.
template <typename Item>
ArrowColumn ConvertedColumn(const Variable& variable, std::string format, double (*convert)(double)) {
    const auto isGap = [&variable](std::size_t i) { return IsGap(variable, variable.Values[i]); };
    ArrowColumn column = Begun(variable.Name, std::move(format), variable.Values.size(), isGap);
    std::vector<Item> items;
    items.reserve(column.Length);
    for (const double value : variable.Values) {
        items.push_back(IsGap(variable, value) ? Item{} : static_cast<Item>(convert(value)));
    }
    column.Buffers.push_back(Kept(std::move(items)));
    return column;
}

bool EachValue(const Variable& variable, bool (*fits)(double)) {
    return std::ranges::all_of(variable.Values, [&](double value) { return IsGap(variable, value) || fits(value); });
}

bool IsWholeDay(double value) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return value == std::floor(value) && std::fabs(value) <= most;
}

bool IsWithinDay(double value) {
    return value >= 0 && value < SecondsOfDay;
}

ArrowColumn DateColumn(const Variable& variable) {
    if (EachValue(variable, IsWholeDay)) {
        return ConvertedColumn<std::int32_t>(variable, "tdD", [](double days) { return days; });
    }
    return ConvertedColumn<std::int64_t>(
        variable, "tsu:", [](double days) { return std::round(days * SecondsOfDay * MicrosecondsOfSecond); });
}

/// A duration where a case has more than the hours of a day.
ArrowColumn TimeColumn(const Variable& variable) {
    return ConvertedColumn<std::int64_t>(variable, EachValue(variable, IsWithinDay) ? "ttu" : "tDu",
                                         [](double seconds) { return std::round(seconds * MicrosecondsOfSecond); });
}

ArrowColumn DateTimeColumn(const Variable& variable) {
    return ConvertedColumn<std::int64_t>(
        variable, "tsu:", [](double seconds) { return std::round(seconds * MicrosecondsOfSecond); });
}

ArrowColumn PlainTextColumn(const Variable& variable) {
    const auto isGap = [&variable](std::size_t i) { return IsGap(variable, variable.Values[i]); };
    const auto textAt = [&](std::size_t i) -> std::string_view {
        return isGap(i) ? std::string_view() : variable.Texts[static_cast<std::size_t>(variable.Values[i]) - 1];
    };
    return TextColumn(variable.Name, variable.Values.size(), isGap, textAt);
}

/// A column that is kept in a narrower form.
std::vector<double> AsDoubles(const Column& column) {
    std::vector<double> doubles;
    doubles.reserve(column.size());
    VisitRuns(column, [&doubles](auto values) { doubles.insert(doubles.end(), values.begin(), values.end()); });
    return doubles;
}

ArrowColumn NumberColumn(const std::shared_ptr<const DataTable>& table, const Variable& variable) {
    ArrowColumn column = Begun(variable.Name, "g", variable.Values.size(),
                               [&variable](std::size_t i) { return IsGap(variable, variable.Values[i]); });
    const auto values = variable.Values.Doubles();
    const bool standsAsDoubles = values.size() == column.Length;
    column.Buffers.push_back(standsAsDoubles ? std::shared_ptr<const void>(table, values.data())
                                             : Kept(AsDoubles(variable.Values)));
    return column;
}

ArrowColumn ColumnOf(const std::shared_ptr<const DataTable>& table, const Variable& variable) {
    if (IsCategorical(variable)) {
        return CategoryColumn(variable);
    }
    switch (variable.Kind) {
        case ValueKind::Date:
            return DateColumn(variable);
        case ValueKind::TimeOfDay:
            return TimeColumn(variable);
        case ValueKind::DateTime:
            return DateTimeColumn(variable);
        case ValueKind::Text:
            return PlainTextColumn(variable);
        default:
            return NumberColumn(table, variable);
    }
}

std::string FreeName(const DataTable& table, std::string name) {
    while (table.Find(name)) {
        name += '_';
    }
    return name;
}

// Result tables

/// On one line, as its name is of a column.
std::string OneLine(const std::string& name) {
    std::istringstream words(name);
    std::string line;
    for (std::string word; words >> word;) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

std::string CellText(const SpreadsheetCell& cell) {
    const auto* number = std::get_if<double>(&cell);
    const auto* text = std::get_if<std::string>(&cell);
    return number != nullptr ? ExactText(*number) : text != nullptr ? *text : "";
}

template <typename Item>
void AddNumbers(ArrowColumn& column, const std::vector<const SpreadsheetCell*>& cells) {
    std::vector<Item> items;
    for (const SpreadsheetCell* cell : cells) {
        const auto* number = std::get_if<double>(cell);
        items.push_back(number == nullptr ? Item{} : static_cast<Item>(*number));
    }
    column.Buffers.push_back(Kept(std::move(items)));
}

ArrowColumn CellColumn(const SpreadsheetColumn& source, const std::vector<const SpreadsheetCell*>& cells) {
    const auto isGap = [&cells](std::size_t i) { return std::holds_alternative<std::monostate>(*cells[i]); };
    const bool hasTexts = std::ranges::any_of(
        cells, [](const SpreadsheetCell* cell) { return std::holds_alternative<std::string>(*cell); });
    if (hasTexts) {
        return TextColumn(OneLine(source.Name), cells.size(), isGap,
                          [&](std::size_t i) { return CellText(*cells[i]); });
    }
    ArrowColumn column = Begun(OneLine(source.Name), source.Whole ? "l" : "g", cells.size(), isGap);
    source.Whole ? AddNumbers<std::int64_t>(column, cells) : AddNumbers<double>(column, cells);
    return column;
}

ArrowColumn RowNames(const SpreadsheetDocument& table) {
    std::vector<std::string> names;
    std::ranges::transform(table.Rows, std::back_inserter(names), &SpreadsheetRow::NameForPeople);
    return TextColumn(table.Corner.empty() ? "row" : OneLine(table.Corner), names);
}

}  // namespace

ArrowHeld<ArrowArrayStream> StreamOfTable(const std::shared_ptr<const DataTable>& table) {
    std::vector<ArrowColumn> columns;
    if (!table->CaseNames.empty()) {
        columns.push_back(TextColumn(FreeName(*table, "case"), table->CaseNames));
    }
    for (const Variable& variable : table->Variables) {
        columns.push_back(ColumnOf(table, variable));
    }
    return StreamOf(std::move(columns), static_cast<std::size_t>(table->Cases));
}

ArrowHeld<ArrowArrayStream> StreamOfSpreadsheet(const SpreadsheetDocument& table) {
    std::vector<ArrowColumn> columns = {RowNames(table)};
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        std::vector<const SpreadsheetCell*> cells;
        for (const SpreadsheetRow& row : table.Rows) {
            cells.push_back(&row.Cells[i]);
        }
        columns.push_back(CellColumn(table.Columns[i], cells));
    }
    return StreamOf(std::move(columns), table.Rows.size());
}
