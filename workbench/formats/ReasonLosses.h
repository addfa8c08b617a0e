#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Whether a statistical file keeps the reasons of a variable's missing data, if there are any: one that declares
/// missing values takes three codes, or a range and a code, and short texts; one that doesn't the marks .a to .z.
[[nodiscard]] bool HasRoomForReasons(const Variable& variable, bool declaresMissing);

/// What a file with this extension, which has no room for them, makes of them: a line for people.
[[nodiscard]] std::string LostReasons(const Variable& variable, std::string_view extension);
/// The same of all variables of which a case has a reason.
[[nodiscard]] std::vector<std::string> LostReasonsOf(const DataTable& table, std::string_view extension);

}  // namespace quillara
