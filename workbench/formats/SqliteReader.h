#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"
#include "workbench/formats/SourceName.h"

namespace quillara {

/// Reads a table, a view or the rows of a query of an SQLite database, which is opened for reading only. What stands in
/// the columns is read by the rules of delimited text (FieldRows), NULL as missing data. Throws DataError, naming the
/// file, when it can't be read or is damaged, when the query isn't one that reads, when a column holds bytes, and, with
/// neither table nor query, when there isn't exactly one table; UsageError and Interrupted as ReadDataFile does.
[[nodiscard]] DataTable ReadSqlite(const DatabaseSource& source, const ReadOptions& options);

}  // namespace quillara
