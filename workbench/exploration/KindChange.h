#pragma once

#include <optional>
#include <string>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Whether the kind of a variable can be another: numbers, texts and dates can.
[[nodiscard]] bool CanChangeKind(ValueKind kind);

/// The variable with its values as numbers, texts or dates. Numbers become texts as they are written, dates
/// YYYY-MM-DD; a date becomes the number YYYYMMDD, and back. Labels and what tells missing data apart go along, the
/// display format doesn't. Throws DataError where a value would be lost: it can't be written so, or two would become
/// the same.
[[nodiscard]] Variable OfKind(const Variable& variable, ValueKind kind);

}  // namespace quillara
