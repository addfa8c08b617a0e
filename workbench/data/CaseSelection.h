#pragma once

#include <string_view>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Applies a case selection to every case of a table: CaseResult::Use inside, CaseResult::Skip outside. A case in
/// which a variable of the formula is missing is outside, except inside missing(NAME).
/// Throws UsageError, saying where, when the formula can't be read; DataError when a variable isn't there.
///
///   age > 30 and sex = "Female"     not missing([marital status]) or income <> "<=50K"     day >= "2024-02-01"
[[nodiscard]] std::vector<CaseResult> SelectCases(const DataTable& table, std::string_view formula);

}  // namespace quillara
