#pragma once

#include <cstddef>
#include <cstdint>

#include "host/TableColumns.h"
#include "platform/OrderedBits.h"

namespace drilldown {

/// Cases of a block that enter a tally: rows of its columns, ascending, and a weight for each.
struct WeightedRows {
    const std::int32_t* Rows = nullptr;  ///< null: rows First, First + 1, ...
    const double* Weights = nullptr;  ///< null: each weighs 1.0
    std::size_t Count = 0;
    std::int32_t First = 0;  ///< where Rows is null
    const std::uint64_t* Bits = nullptr;  ///< where Rows are just these: a bit for each row of the block; null: unknown

    [[nodiscard]] std::int32_t RowAt(std::size_t place) const noexcept {
        return Rows == nullptr ? First + static_cast<std::int32_t>(place) : Rows[place];
    }
    [[nodiscard]] double WeightAt(std::size_t place) const noexcept {
        return Weights == nullptr ? 1.0 : Weights[place];
    }
    /// `count` of them, from a place on.
    [[nodiscard]] WeightedRows Part(std::size_t place, std::size_t count) const noexcept {
        return {Rows == nullptr ? nullptr : Rows + place, Weights == nullptr ? nullptr : Weights + place, count,
                First + static_cast<std::int32_t>(place), Bits};
    }
};

/// One variable of a block: its column, which begins with the first row of the block, and the values that stand for
/// missing data.
struct TallyColumn {
    TableColumn Entries;
    NearlyEqualRange Missing{};
};

/// Calls `use` with a function that gives the value of a row, made for the form of the column: for loops over many.
template <typename Use>
decltype(auto) WithValues(const TableColumn& column, Use use) {
    switch (column.Form) {
        case ColumnForm::Integers:
            return use(
                [entries = column.As<std::int32_t>()](std::int32_t row) { return static_cast<double>(entries[row]); });
        case ColumnForm::Codes8:
            return use([entries = column.As<std::uint8_t>(), values = column.Values](std::int32_t row) {
                return values[entries[row]];
            });
        case ColumnForm::Codes16:
            return use([entries = column.As<std::uint16_t>(), values = column.Values](std::int32_t row) {
                return values[entries[row]];
            });
        case ColumnForm::Doubles:
            break;
    }
    return use([entries = column.As<double>()](std::int32_t row) { return entries[row]; });
}

}  // namespace drilldown
