#include "workbench/hosting/CaseRows.h"

#include <algorithm>

namespace quillara {
namespace {

/// Rows that are read at a time stay in the first cache, but for the widest tables.
constexpr std::size_t MostRows = 64;
constexpr std::size_t ValuesInCache = 2048;

/// Puts values into one column of rows that are `width` values long.
template <typename ValueAt>
void Place(double* place, std::size_t width, std::size_t count, ValueAt valueAt) {
    for (std::size_t i = 0; i < count; ++i, place += width) {
        *place = valueAt(i);
    }
}

void PlaceColumn(const TableColumn& column, std::size_t first, double* place, std::size_t width, std::size_t count) {
    const auto placeCodes = [&](const auto* codes) {
        Place(place, width, count, [codes, values = column.Values](std::size_t i) { return values[codes[i]]; });
    };
    const auto placeNumbers = [&](const auto* numbers) {
        Place(place, width, count, [numbers](std::size_t i) { return static_cast<double>(numbers[i]); });
    };
    switch (column.Form) {
        case ColumnForm::Doubles:
            return placeNumbers(column.As<double>() + first);
        case ColumnForm::Integers:
            return placeNumbers(column.As<std::int32_t>() + first);
        case ColumnForm::Codes8:
            return placeCodes(column.As<std::uint8_t>() + first);
        case ColumnForm::Codes16:
            return placeCodes(column.As<std::uint16_t>() + first);
    }
}

std::size_t MostRowsOf(const DataTable& table) {
    return std::clamp(ValuesInCache / std::max<std::size_t>(table.Variables.size(), 1), std::size_t{1}, MostRows);
}

}  // namespace

CaseRows::CaseRows(const DataTable& table)
    : Cases(static_cast<std::size_t>(table.Cases)), Most(MostRowsOf(table)), Values(Most * table.Variables.size()) {
    Columns.reserve(table.Variables.size());
    for (const Variable& variable : table.Variables) {
        Columns.push_back(variable.Values.Stored());
    }
}

/// A case that doesn't come soon behind those before is read alone: it may be the only one that is asked for.
void CaseRows::Read(std::size_t row) {
    const bool isInOrder = row - First < Count + Most;
    First = row;
    Count = isInOrder ? std::min(Most, Cases - row) : 1;
    for (std::size_t variable = 0; variable < Width(); ++variable) {
        PlaceColumn(Columns[variable], First, &Values[variable], Width(), Count);
    }
}

}  // namespace quillara
