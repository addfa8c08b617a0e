#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// A file that was written isn't read back as what it must hold.
class ReadBackDifference : public DataError {
  public:
    /// `what` names the thing that differs, `detail` goes on behind "as it is".
    ReadBackDifference(const std::string& what, const std::string& detail)
        : DataError(what + " wouldn't be read back as it is" + detail + "; choose another format.") {}
};

/// What a file that was written must be read back as.
struct ExpectedTable {
    const DataTable& Table;  ///< title text, weight and case names
    std::vector<const Variable*> Variables;  ///< in place of those of Table
    bool KeepsNegativeZero = true;
    std::vector<const MissingReasons*> Reasons{};  ///< of the missing data of each variable; null: not kept
};

/// Compares what was read from a file with what it must hold: cases and their names, the declared weight, the title
/// text, and of each variable name, long name, kind, values (bit for bit; a text by itself, not by its number), missing
/// data with their reasons, labels and descriptions. A label counts where a value can have one: missing data have none,
/// nor do texts that no case has. Throws ReadBackDifference naming the variable at the first difference, Interrupted
/// when the monitor's work was cancelled.
void CheckReadBack(const ExpectedTable& expected, const DataTable& readBack, WorkMonitor& monitor);

}  // namespace quillara
