#pragma once

#include <vector>

#include "workbench/documents/ResultDocument.h"

namespace quillara {

/// What a document holds as tables for people. A spreadsheet is its only table. A graph gives its numbers: the counts
/// of a histogram, a pie or a 3D histogram, the shares of a stacked plot, the statistics of the others. At least one
/// table; the first has the title of the document, further ones have none.
[[nodiscard]] std::vector<SpreadsheetDocument> TablesOf(const DocumentContent& content);

/// The same without titles, and with all values as numbers: a day is its number of days since 1970-01-01.
[[nodiscard]] std::vector<SpreadsheetDocument> ExactTablesOf(const DocumentContent& content);

}  // namespace quillara
