#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// What a table was read from.
struct TableOrigin {
    std::vector<std::string> Names;  ///< of the variables as they stand in the file; none where it has no names
    bool IsDelimited = true;  ///< a file of delimited text, not a sheet or a table of a database
    std::size_t AboveNames = 0;  ///< lines that seem to stand above the names, as titles do; 0: none
};

/// What looks odd about the shape of a table that was just read and may mislead: a single variable, names that look
/// like values, variables without a name or with one that others have.
[[nodiscard]] std::vector<Remark> RemarksOnShape(const DataTable& table, const TableOrigin& origin);

/// Tells which variables have no value at all, if there are such.
[[nodiscard]] std::optional<Remark> RemarkOnEmptyVariables(const DataTable& table);

}  // namespace quillara
