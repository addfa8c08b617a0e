#include "workbench/formats/Dictionary.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/VariableIndex.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

/// Where the columns stand in a record.
struct Columns {
    std::optional<std::size_t> VariableName;
    std::optional<std::size_t> Value;
    std::optional<std::size_t> Label;
    std::optional<std::size_t> Description;
};

/// One record of the file, named.
struct Row {
    const std::string& VariableName;
    const std::string& Value;
    const std::string& Label;
    const std::string& Description;
};

Columns FindColumns(const std::vector<std::string>& names) {
    const auto find = [&](std::string_view name) -> std::optional<std::size_t> {
        const auto found = std::ranges::find(names, name);
        return found == names.end() ? std::nullopt : std::optional<std::size_t>(found - names.begin());
    };
    return {find("variable"), find("value"), find("label"), find("description")};
}

Row NamedRow(const std::vector<std::string>& fields, const Columns& columns) {
    static const std::string none;
    const auto field = [&](std::optional<std::size_t> column) -> const std::string& {
        return column ? fields[*column] : none;
    };
    return {field(columns.VariableName), field(columns.Value), field(columns.Label), field(columns.Description)};
}

/// The place of a text among those of a text variable, which is its value; nothing for a text that no case has.
std::optional<double> ValueOfText(const Variable& variable, const std::string& text) {
    const auto found = std::ranges::lower_bound(variable.Texts, text);
    if (found == variable.Texts.end() || *found != text) {
        return std::nullopt;
    }
    return static_cast<double>(found - variable.Texts.begin() + 1);
}

double ValueOfNumberOrDate(const Variable& variable, const std::string& text) {
    const bool isDate = variable.Kind == ValueKind::Date;
    const bool hasTime = variable.Kind == ValueKind::DateTime;
    const std::optional<double> value = isDate    ? DaysFromText(text)
                                        : hasTime ? SecondsFromDateTime(text)
                                                  : DecimalNumber(text);
    if (!value) {
        throw DataError(Quoted(text) + " is no value of the variable " + Quoted(variable.Name) + ", which holds " +
                        (isDate    ? "dates as YYYY-MM-DD."
                         : hasTime ? "dates with times as YYYY-MM-DD HH:MM:SS."
                                   : "numbers."));
    }
    return *value;
}

void Replace(std::string& text, const std::string& by) {
    if (!by.empty()) {
        text = by;
    }
}

void DescribeValue(Variable& variable, const Row& row) {
    const std::optional<double> value = variable.Kind == ValueKind::Text
                                            ? ValueOfText(variable, row.Value)
                                            : std::optional(ValueOfNumberOrDate(variable, row.Value));
    const bool isReason = !row.Label.empty() && (value ? LabelReason(variable, *value, row.Label)
                                                       : LabelReason(variable, row.Value, row.Label));
    if (value && !isReason && !(row.Label.empty() && row.Description.empty())) {
        ValueTexts& texts = variable.Labels[*value];
        Replace(texts.Label, row.Label);
        Replace(texts.Description, row.Description);
    }
}

void ApplyRow(Variable& variable, const Row& row) {
    if (row.Value.empty()) {
        Replace(variable.LongName, row.Label);
    } else {
        DescribeValue(variable, row);
    }
}

[[noreturn]] void RefuseColumns(const std::string& path, const std::vector<DelimitedRecord>& records) {
    const std::string found = records.empty() ? "it is empty" : "it has " + QuotedList(records.front().Fields);
    throw DataError(Quoted(path) + " is no dictionary: it needs a column named \"variable\"; " + found + ".");
}

}  // namespace

void ApplyDictionary(DataTable& table, const std::string& path, std::optional<std::size_t> maxMemory) {
    const std::vector<DelimitedRecord> records = ReadDelimitedRecords(path, {.MaxMemory = maxMemory});
    const Columns columns = records.empty() ? Columns() : FindColumns(records.front().Fields);
    if (!columns.VariableName) {
        RefuseColumns(path, records);
    }
    const VariableIndex variables(table);
    for (std::size_t record = 1; record < records.size(); ++record) {
        try {
            const Row row = NamedRow(records[record].Fields, columns);
            ApplyRow(table.Variables[variables.IndexOf(row.VariableName)], row);
        } catch (const DataError& error) {
            throw DataError(Quoted(path) + ", line " + std::to_string(records[record].Line) + ": " + error.what());
        }
    }
}

}  // namespace quillara
