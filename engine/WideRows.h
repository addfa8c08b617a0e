#pragma once

#include <cstddef>
#include <cstdint>

#include "host/TableColumns.h"

namespace drilldown {

// Rows of a bitmap brought together by registers of eight doubles, without a look at each. Only where the processor
// HasRegisters(MomentRegisters::Widest).

/// What a column goes on with is asked for so many rows before, since others come between.
inline constexpr std::size_t RowsAhead = 512;

/// Entries that are written behind the last one that counts.
inline constexpr std::size_t WideSlack = 16;

/// Lists the set bits of so many words, numbered from 0. Gives how many there are; `rows` has room for WideSlack more.
std::size_t ListSetBits(const std::uint64_t* bits, std::size_t words, std::int32_t* rows);

/// Whether the values of a column can be drawn together: doubles, and codes of few values.
[[nodiscard]] bool CanDrawTogether(const TableColumn& column);
/// Writes the values of the rows with a set bit, or of all without `bits`, side by side: from row `first` up to before
/// the last multiple of 8 that isn't above `end`. Gives how many there are; `values` has room for WideSlack more.
std::size_t DrawTogether(const TableColumn& column, const std::uint64_t* bits, std::size_t first, std::size_t end,
                         double* values);

}  // namespace drilldown
