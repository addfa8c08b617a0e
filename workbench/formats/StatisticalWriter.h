#pragma once

#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/StatisticalLayout.h"
#include "workbench/formats/StatisticalRules.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Writes a sav, zsav or dta file with this layout and number of cases. Missing data are what their
/// reason says, else system missing or a blank text. sav files are packed row by row, unless a value is a negative
/// zero, which packing would lose; zsav files lose its sign. Throws DataError, naming the variable, when the file can't
/// hold a value; Interrupted when the monitor's work was cancelled; what `write` throws.
void WriteStatisticalFile(const StatisticalLayout& layout, const StatisticalRules& rules, const ByteSink& write,
                          WorkMonitor& monitor);

}  // namespace quillara
