#pragma once

#include <string_view>

#include "workbench/data/DataTable.h"
#include "workbench/data/SelectionProgram.h"

namespace quillara {

/// Reads a selection formula for a table. Throws as SelectCases does.
[[nodiscard]] SelectionProgram ReadFormula(const DataTable& table, std::string_view formula);

}  // namespace quillara
