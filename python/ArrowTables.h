#pragma once

#include <memory>

#include "python/ArrowStructs.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/SpreadsheetDocument.h"

/// A table for others. Values with labels are a dictionary of texts, as CategoriesOf names them; texts, numbers and
/// times of day stay what they are; dates are days, or microseconds where a case has a part of a day; missing data is
/// null. Columns of doubles aren't copied: the stream, and each array that it gives, keeps the table. Names of cases
/// come first, as the column "case".
[[nodiscard]] ArrowHeld<ArrowArrayStream> StreamOfTable(const std::shared_ptr<const quillara::DataTable>& table);

/// A result table for others: the names of the rows, under the text above them or "row", then its columns.
[[nodiscard]] ArrowHeld<ArrowArrayStream> StreamOfSpreadsheet(const quillara::SpreadsheetDocument& table);
