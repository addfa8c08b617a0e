#pragma once

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"
#include "workbench/formats/SourceName.h"

namespace quillara {

/// Reads a table or the rows of a query of a database by ODBC, as ReadSqlite does. The connection asks for reading
/// only, and whatever the query may have done is taken back in the end, where the database can. Throws as ReadSqlite
/// does, and DataError when ODBC isn't installed or there is no such source; its text never holds the connection
/// string.
[[nodiscard]] DataTable ReadOdbc(const DatabaseSource& source, const ReadOptions& options);

}  // namespace quillara
