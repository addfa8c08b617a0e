#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "python/ArrowStructs.h"

/// A column as it is handed to others: what its schema and its array say. Buffers are shared, so that a column goes out
/// without a copy and lives as long as somebody holds it.
struct ArrowColumn {
    std::string Name;
    std::string Format;
    std::size_t Length = 0;
    std::size_t Gaps = 0;
    std::vector<std::shared_ptr<const void>> Buffers;  ///< as the format asks; the first tells which values there are
    std::vector<ArrowColumn> Children{};
    std::shared_ptr<const ArrowColumn> Dictionary{};
};

/// A stream of one chunk, a table of these columns. Throws bad_alloc.
[[nodiscard]] ArrowHeld<ArrowArrayStream> StreamOf(std::vector<ArrowColumn> columns, std::size_t cases);
