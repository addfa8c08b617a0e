#pragma once

#include <string>
#include <vector>

#include "workbench/documents/SpreadsheetDocument.h"

namespace quillara {

using CsvRecord = std::vector<std::string>;

/// A record of delimited text with its line feed. One that is a single empty field is written as "".
[[nodiscard]] std::string CsvText(const CsvRecord& record);

/// A cell as a field: a text that steers nothing, a number that reads back as the same double, or nothing.
[[nodiscard]] std::string CsvCell(const SpreadsheetCell& cell);

/// A table as records: its header, then its rows. Its title is left out.
[[nodiscard]] std::string CsvTable(const SpreadsheetDocument& table);

}  // namespace quillara
