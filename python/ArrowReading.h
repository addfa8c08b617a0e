#pragma once

#include <string>
#include <vector>

#include "python/ArrowStructs.h"
#include "workbench/data/DataTable.h"

/// A table that came as a stream.
struct ArrowTable {
    quillara::DataTable Table;
    std::vector<std::string> Rounded;  ///< columns whose whole numbers have more digits than a table keeps
};

/// Reads all chunks of a stream and releases it. A dictionary of texts becomes values 1, 2, ... with labels, in its
/// order, and what later chunks add to it behind them; truths become 1 and 0 with labels; null is missing data. Throws
/// DataError for a stream that fails or isn't of columns, and for a column that a table has no room for, which it
/// names; Interrupted when `cancelled`.
[[nodiscard]] ArrowTable ReadArrow(ArrowHeld<ArrowArrayStream>& stream, bool (*cancelled)());
