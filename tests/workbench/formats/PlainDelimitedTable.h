#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// What ReadDelimitedTable must give, read the plain way: a character at a time, one field after another, all fields
/// kept until all are there. Throws the same errors.
[[nodiscard]] DataTable PlainDelimitedTable(const std::string& path, const ReadOptions& options);

}  // namespace quillara
