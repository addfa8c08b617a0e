#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// What tells how the numbers of a file are written.
struct NumberSurroundings {
    char Separator = ',';  ///< between its fields
    char Decimal = '.';
    bool TakesDecimal = true;  ///< whether --decimal counts for it
};

/// Makes numbers of the text variables whose texts are all numbers in one and the same notation (FindNotation): a
/// percent is a fraction, "10%" is 0.1. Where commas may be either, "1,234" in all cases, they are those of thousands,
/// unless semicolons separate the fields or another variable has decimal commas: then the texts stay. They also stay
/// where a decimal comma separates the fields too, unless there are points between thousands or signs of a currency or
/// of percents: "1,5" may be two numbers. Gives a remark for each notation that was read, and one for each variable
/// that stays.
[[nodiscard]] std::vector<Remark> ReadNumbersInTexts(DataTable& table, const NumberSurroundings& surroundings);

}  // namespace quillara
