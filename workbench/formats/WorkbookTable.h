#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// A table as the bytes of an xlsx workbook with one sheet: what WriteDelimitedText says in cells, labels in place of
/// codes; numbers as numbers, days and times of day as such where sheets know them (from 1900-03-01 to 9999-12-31),
/// missing data as empty cells; the names stay in sight. Throws DataError when a sheet can't hold it, Interrupted.
[[nodiscard]] std::string WorkbookOfTable(const DataTable& table, WorkMonitor& monitor);

}  // namespace quillara
