#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Writes a table as comma separated text in UTF-8: names first, one line a case, missing data as empty fields. Names
/// of cases are the first column, Case (or Case_2, Case_3, ..., the first name that no variable has). Labels and texts
/// stand in place of a variable's values when every value that occurs has one of its own; otherwise a text variable
/// gives its texts and any other its numbers, in the shortest form that reads back as the same double. Dates are
/// YYYY-MM-DD, times of day HH:MM:SS. Not kept: long names, descriptions, value labels beside those shown, the title
/// text, the weight's declaration. DelimitedLosses tells what is lost of the values. Throws Interrupted when the
/// monitor's work was cancelled, and what `write` throws.
void WriteDelimitedText(const DataTable& table, const ByteSink& write, WorkMonitor& monitor);

/// The same text in memory.
[[nodiscard]] std::string TextOfTable(const DataTable& table);
[[nodiscard]] std::string TextOfTable(const DataTable& table, WorkMonitor& monitor);

}  // namespace quillara
