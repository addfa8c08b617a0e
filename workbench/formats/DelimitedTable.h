#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Reads a file of delimited text as a table. A variable is numeric when all its fields that aren't missing are decimal
/// numbers, or when it has none; a date when all are days YYYY-MM-DD; else text, unless all its texts are numbers in
/// one notation (ReadNumbersInTexts). What is odd about the table is told to options.Noticed. Throws DataError, naming
/// the file and the line, for a record with too many or too few fields, a quote that is never closed, a number too
/// large for a double; also for a file without any record. Surprise: with --decimal "," a comma is the last choice as
/// the separator that is found, not the first.
[[nodiscard]] DataTable ReadDelimitedTable(const std::string& path, const ReadOptions& options);

/// The same of bytes that are there already.
[[nodiscard]] DataTable TableOfDelimitedText(std::string bytes, const ReadOptions& options);

/// The same of the text of FieldRows, which came out of the sheet or database named `path`; of the options only those
/// count that say what fields mean, and for a sheet where its names are. The monitor has seen the fields gathered.
[[nodiscard]] DataTable TableOfSheet(std::string text, const std::string& path, const ReadOptions& options,
                                     WorkMonitor& monitor);
[[nodiscard]] DataTable TableOfDatabase(std::string text, const std::string& path, const ReadOptions& options,
                                        WorkMonitor& monitor);

}  // namespace quillara
