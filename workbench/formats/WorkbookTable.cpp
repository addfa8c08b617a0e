#include "workbench/formats/WorkbookTable.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/formats/CellFormats.h"
#include "workbench/formats/DelimitedColumns.h"
#include "workbench/formats/WorkbookWriter.h"

namespace quillara {
namespace {

/// The number of a day or time in a sheet; nothing for one that sheets don't know.
std::optional<double> SerialOf(ValueKind kind, const std::string& field) {
    if (kind == ValueKind::TimeOfDay) {
        const std::optional<double> seconds = SecondsFromText(field);
        return seconds ? std::optional(SerialOfSeconds(*seconds)) : std::nullopt;
    }
    if (kind == ValueKind::DateTime) {
        const std::optional<double> seconds = SecondsFromDateTime(field);
        return seconds ? SerialOfDateTime(*seconds) : std::nullopt;
    }
    const std::optional<double> days = DaysFromText(field);
    return days ? SerialOfDay(*days) : std::nullopt;
}

CellStyle StyleOf(ValueKind kind) {
    return kind == ValueKind::Date       ? CellStyle::Date
           : kind == ValueKind::DateTime ? CellStyle::DateTime
                                         : CellStyle::Time;
}

void AddField(ShownColumn& column, std::size_t row, WorkbookWriter& writer) {
    const ValueKind kind = column.Kind();
    const std::string& field = column.Field(row);
    if (column.IsMissing(row) || field.empty()) {
        writer.AddEmpty();
    } else if (kind == ValueKind::Number) {
        writer.Add(column.Source()->Values[row]);
    } else if (const auto serial = kind == ValueKind::Text ? std::nullopt : SerialOf(kind, field)) {
        writer.Add(*serial, StyleOf(kind));
    } else {
        writer.Add(field);
    }
}

/// By the first cases.
std::size_t WidthOf(ShownColumn& column, std::size_t cases) {
    constexpr std::size_t looked = 100;
    std::size_t width = column.Name().size();
    for (std::size_t row = 0; row < std::min(cases, looked); ++row) {
        width = std::max(width, column.Field(row).size());
    }
    return width;
}

/// Readers take an empty row behind all others for none.
bool IsEmptyRow(std::vector<ShownColumn>& columns, std::size_t row) {
    return std::ranges::all_of(
        columns, [row](ShownColumn& column) { return column.IsMissing(row) || column.Field(row).empty(); });
}

}  // namespace

std::string WorkbookOfTable(const DataTable& table, WorkMonitor& monitor) {
    std::vector<ShownColumn> columns = ShownColumns(table);
    const auto cases = static_cast<std::size_t>(table.Cases);
    std::vector<std::size_t> widths;
    for (ShownColumn& column : columns) {
        widths.push_back(WidthOf(column, cases));
    }
    WorkbookWriter writer(monitor);
    writer.BeginSheet("Data", 1, widths);
    for (const ShownColumn& column : columns) {
        writer.Add(column.Name(), CellStyle::Heading);
    }
    writer.EndRow();
    for (std::size_t row = 0; row < cases; ++row) {
        if (row + 1 == cases && IsEmptyRow(columns, row)) {
            writer.Add("");
        } else {
            for (ShownColumn& column : columns) {
                AddField(column, row, writer);
            }
        }
        writer.EndRow();
    }
    return writer.Finish();
}

}  // namespace quillara
