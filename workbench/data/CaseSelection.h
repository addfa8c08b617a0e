#pragma once

#include <string_view>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Applies a case selection to every case of a table: CaseResult::Use inside, CaseResult::Skip outside. A case in
/// which a variable of the formula is missing is outside, except inside missing(NAME); so is a case in which the
/// formula's arithmetic divides by zero or doesn't give a finite number, whatever else the formula says of it.
/// Throws UsageError, saying where, when the formula can't be read; DataError when a variable isn't there.
///
/// Comparisons bind tighter than not, not tighter than and, and tighter than or; they can't be chained (a < b < c).
/// Numbers are compared as they are, without tolerance. Names count the case of letters, the words and, or, not and
/// missing don't; a variable called And, Or or Not stands in brackets, and one called Missing before a bracket. A
/// quoted text is compared with a text variable or with the labels of a variable, by = and <> only; with a date it is
/// YYYY-MM-DD, with a time of day HH:MM:SS.
///
///   age > 30 and sex = "Female"     not missing([marital status]) or income <> "<=50K"     day >= "2024-02-01"
[[nodiscard]] std::vector<CaseResult> SelectCases(const DataTable& table, std::string_view formula);

}  // namespace quillara
