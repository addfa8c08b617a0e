#pragma once

#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/FormulaParts.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// A formula that has been read for a table, which must outlive it.
struct Formula {
    FormulaPart Whole;  ///< a condition, a value, or a quoted text
    bool JoinsByOr = false;
    std::vector<Remark> Notices;
};

/// Reads a formula for a table. Throws UsageError, saying where, when it can't be read; DataError when a variable isn't
/// there.
///
/// Comparisons, in (...) and between a and b bind tighter than not, not tighter than and, and tighter than or;
/// comparisons can't be chained (a < b < c). Numbers are compared as they are, without tolerance. Names count the case
/// of letters, words of the language don't; a variable called And, Or or Not stands in brackets. A text stands in
/// double or single quotes; it is compared with a text variable or with the labels of a variable, by = and <> and in
/// only, and where no value bears it, with regard to nothing but the case of letters (Remark "text-other-case",
/// "text-not-found"). Beside a date it is YYYY-MM-DD, beside a time of day HH:MM:SS.
///
/// What is made of missing values is missing; so is what isn't a finite number. Two exceptions: missing(NAME), with
/// missing values behind the name, as missing(q, 98, "Not stated"), only where it is one of these; and if(), which is
/// what the result chosen by its condition is.
///
///   age > 30 and sex = 'Female'     not missing([marital status]) or income <> "<=50K"     day >= "2024-02-01"
///   if(age between 18 and 65, hours / 40, missing())     cut(age, 25, 45, 65)     region in ('North', 'South')
[[nodiscard]] Formula ReadFormula(const DataTable& table, const FormulaText& text);

}  // namespace quillara
