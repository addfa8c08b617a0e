#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/Remark.h"

namespace quillara {

struct GatheredColumn;
class FieldRules;

/// Whether a number begins with a zero that says nothing about it, as in "007"; but not "0" and "0.7".
[[nodiscard]] inline bool BeginsWithSpareZero(std::string_view field) {
    return field.size() > 1 && field[0] == '0' && '0' <= field[1] && field[1] <= '9';
}

/// What leading zeros tell of a variable whose fields are all numbers.
struct LeadingZeros {
    bool AreIdentifiers = false;  ///< all are digits of one length, as in "01234", "20095"; else plain numbers
    std::string Example{};  ///< a field that has some
};

/// Looks at a column that was gathered as texts; nothing where no field has leading zeros.
[[nodiscard]] std::optional<LeadingZeros> FindLeadingZeros(const GatheredColumn& column, const FieldRules& rules);

/// Variables with leading zeros: they stay texts, or are numbers that lose them.
struct VariableWithZeros {
    std::string Name;
    LeadingZeros Zeros;
};

/// What happened to them.
[[nodiscard]] std::vector<Remark> RemarksOnZeros(const std::vector<VariableWithZeros>& variables);

}  // namespace quillara
