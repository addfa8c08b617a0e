#pragma once

#include <string>
#include <vector>

#include "workbench/data/FormulaParts.h"

namespace quillara {

/// Whether there is a function of this name, in letters of any case.
[[nodiscard]] bool IsFunction(std::string_view name);

/// The names of all functions, with commas between.
[[nodiscard]] std::string FunctionNames();
/// The one that a mistyped name probably means.
[[nodiscard]] std::optional<std::string> FunctionMeant(std::string_view name);

/// The call of a function. Throws UsageError when it takes no such arguments.
[[nodiscard]] FormulaPart CallOf(const FormulaContext& context, const Token& name,
                                 const std::vector<FormulaPart>& arguments);

}  // namespace quillara
