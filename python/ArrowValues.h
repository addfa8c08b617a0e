#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "python/ArrowStructs.h"
#include "workbench/data/DataTable.h"

/// The values of a column in the order in which they came: numbers, NaN for missing ones, or texts.
struct ArrowValues {
    std::vector<double> Numbers{};
    std::vector<std::optional<std::string>> Texts{};
    bool AreRounded = false;  ///< whole numbers had more digits than a double
};

/// What the values of a format are, and how they are read.
struct ArrowKind {
    quillara::ValueKind Kind;
    bool IsTruth;  ///< 0 and 1 stand for False and True
    double Unit;  ///< so many make one of ours
    int Scale;  ///< of decimal numbers: digits behind the point
    /// Adds the values of the rows [begin, begin + count), in the numbering of the buffers.
    void (*Add)(ArrowValues& values, const ArrowArray& array, const ArrowKind& kind, std::int64_t begin,
                std::int64_t count);
};

/// Nothing for a format that a table has no room for.
[[nodiscard]] std::optional<ArrowKind> ArrowKindOf(std::string_view format);

/// Whether the value of a row, in the numbering of the buffers, is there.
[[nodiscard]] bool IsPresent(const ArrowArray& array, std::int64_t row);
