#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Reads a sheet of a workbook, xlsx or ods, by its content; its first row that isn't empty holds names unless the
/// options say otherwise. What stands in the cells is read by the rules of delimited text (FieldRows). Empty rows above
/// the first and below the last other one are passed over. Throws DataError, naming the file, when it is damaged, cut
/// short or protected, or hasn't the sheet; Interrupted as ReadDataFile does.
[[nodiscard]] DataTable ReadWorkbook(const std::string& path, const ReadOptions& options);

}  // namespace quillara
