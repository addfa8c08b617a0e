#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Formulas that select cases of this table, for people who see how they are written: a comparison with a number or a
/// date that cases have on both sides of it, one with a label, both joined, and cases with a value. Each variable's
/// first cases are looked at only. Empty for a table of missing data.
[[nodiscard]] std::vector<std::string> SelectionExamples(const DataTable& table);

}  // namespace quillara
