#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// What tells how the numbers of a file are written.
struct NumberSurroundings {
    char Separator = ',';  ///< between its fields
    std::optional<char> Decimal{};  ///< told by the user
    bool TakesDecimal = true;  ///< whether --decimal counts for it
    bool HasDecimalPoints = false;  ///< whether other numbers have points that can only stand before decimals
    std::vector<std::string> Kept{};  ///< names of variables that are to stay texts

    [[nodiscard]] bool IsKept(const std::string& name) const;
};

/// Whether the texts of some variables are certainly numbers with decimal commas, and would be read.
[[nodiscard]] bool HaveDecimalCommas(DataTable& table, const NumberSurroundings& surroundings);

/// Makes numbers of the text variables whose texts are all numbers in one and the same notation (FindNotation): a
/// percent is a fraction, "10%" is 0.1. Where commas may be either, "1,234" in all cases, the other variables of the
/// file tell: they stand before decimals where commas of others certainly do, and between thousands where points of
/// others stand before decimals. Where both or neither is so, they stand between thousands, but in a file of semicolons
/// or of both the texts stay. They also stay where a decimal comma separates the fields too, unless there are points
/// between thousands or signs of a currency or of percents: "1,5" may be two numbers. Gives a remark for each notation
/// that was read, and one for each variable that stays.
[[nodiscard]] std::vector<Remark> ReadNumbersInTexts(DataTable& table, const NumberSurroundings& surroundings);

}  // namespace quillara
