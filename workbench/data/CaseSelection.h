#pragma once

#include <string_view>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// Applies a case selection to every case of a table: CaseResult::Use inside, CaseResult::Skip outside. The formula
/// (FormulaReader.h) is a condition. A case in which a variable of the formula is missing is outside, except inside
/// missing(NAME) and in the result that an if() doesn't choose; so is a case in which the formula's arithmetic divides
/// by zero or doesn't give a finite number, whatever else the formula says of it. Where an `or` holds in spite of that,
/// it is noticed ("or-with-missing"); `notices` takes what is noticed, unless it is null.
/// Throws UsageError, saying where, when the formula can't be read; DataError when a variable isn't there.
[[nodiscard]] std::vector<CaseResult> SelectCases(const DataTable& table, std::string_view formula,
                                                  std::vector<Remark>* notices = nullptr);

}  // namespace quillara
