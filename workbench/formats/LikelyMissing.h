#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/DeclaredMissing.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// Tells of numbers that look like codes of missing data: 99, 999, 9999, ... five times as large as all other values of
/// a variable, which are none below 0; -9, -99, ..., -8, -88, ..., -7, -77, ... where no other value is below 0; -1 of
/// two or more cases where all other values are 1 and above. All other values must be at least ten cases. Variables
/// with labels or with declared missing values are passed over.
[[nodiscard]] std::vector<Remark> RemarksOnLikelyMissing(const DataTable& table,
                                                         const std::vector<DeclaredMissing>& declared);

/// Tells of texts that keep a variable from being numbers: at most three, such as "k.A.", among ten times as many
/// that are numbers. Variables that are `kept` texts are passed over.
[[nodiscard]] std::vector<Remark> RemarksOnNearNumbers(const DataTable& table, const std::vector<std::string>& kept);

}  // namespace quillara
