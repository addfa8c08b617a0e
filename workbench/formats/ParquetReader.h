#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Reads a Parquet file by the library of DuckDB. What stands in its columns is read by the rules of delimited text
/// (FieldRows): days, times and moments as ISO 8601 writes them, a moment at midnight as its day, truth as TRUE or
/// FALSE, lists and structures as texts; NULL and NaN are missing data. Columns of bytes are left out with a remark.
/// Throws DataError, naming the file, when it can't be read or is damaged, or holds nothing but bytes, and when the
/// library isn't installed; UsageError and Interrupted as ReadDataFile does.
[[nodiscard]] DataTable ReadParquet(const std::string& path, const ReadOptions& options);

}  // namespace quillara
