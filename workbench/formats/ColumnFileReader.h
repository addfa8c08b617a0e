#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Opens a column file. Its columns stay in the mapped file, so that opening reads nothing but names, labels, texts and
/// the values of codes, whatever the number of cases; these are checked at once, and the columns too unless
/// options.ChecksColumns is false: then CheckColumns is to do that before they are used. Of the other options only
/// Threads, Progress and Cancelled count.
/// Throws DataError, naming the file, when it can't be read, is damaged, cut short, foreign or of a later version.
[[nodiscard]] DataTable ReadColumnFile(const std::string& path, const ReadOptions& options);

/// Checks columns of a table, if it is one that was opened without that; `threads` as in ReadOptions. The variables are
/// numbered from 0, none twice. Throws DataError when one isn't what was written, Interrupted when the monitor's work
/// was cancelled.
void CheckColumns(DataTable& table, const std::vector<std::size_t>& variables, std::size_t threads,
                  WorkMonitor& monitor);
/// The same of all columns.
void CheckAllColumns(DataTable& table, std::size_t threads, WorkMonitor& monitor);

}  // namespace quillara
