#pragma once

#include <string>
#include <vector>

namespace quillara {

/// The names of variables from the fields of the first record: an empty one becomes Var and its number; a repeated
/// one gets _2, _3, ..., the first of these that no variable has.
[[nodiscard]] std::vector<std::string> VariableNames(std::vector<std::string> fields);

}  // namespace quillara
