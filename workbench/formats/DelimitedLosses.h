#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Compares a table with what reading gives of its TextOfTable, and says in a line per variable what is lost of its
/// values: texts that become missing data ("None"), numbers or dates ("007"), or lose the blanks around them; parts of
/// days and seconds; times of day, which become texts; names; and what keeps it. Codes that give way to their labels
/// are no loss. `file` is the text's name in the lines. Throws ReadBackDifference for any other difference, naming the
/// variable; Interrupted when the monitor's work was cancelled.
[[nodiscard]] std::vector<std::string> DelimitedLosses(const DataTable& table, const DataTable& readBack,
                                                       const std::string& file, WorkMonitor& monitor);

}  // namespace quillara
