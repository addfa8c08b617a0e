#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// A variable that is made of others of its table.
struct DerivedVariable {
    std::string Name;
    std::string Formula;  ///< as FormulaReader.h says; may name variables that were derived before
};

/// Adds a variable to the table, with its formula as the variable's label: numbers, texts, dates or times of day as the
/// formula gives them; a condition gives 1 and 0 with the labels yes and no. An empty text is missing. `notices` takes
/// what is noticed.
/// Throws UsageError when the formula can't be read or there is no name, DataError when the name stands already or one
/// of the formula doesn't.
void Derive(DataTable& table, const DerivedVariable& derived, std::vector<Remark>& notices);

}  // namespace quillara
