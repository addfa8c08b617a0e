#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Missing values of a variable that are to be values as any other.
struct ValidCodes {
    std::string Variable;
    std::vector<std::string> Codes{};  ///< by their values or labels; none: all that stand for a number or text
};

/// Makes them values, labelled as they were; what is left is missing as before. Throws DataError, saying what there is,
/// for a variable or a missing value that isn't there, or for one that is no number, as .a.
void TakeAsValid(DataTable& table, const ValidCodes& valid);

}  // namespace quillara
