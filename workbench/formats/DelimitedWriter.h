#pragma once

#include <functional>
#include <string>

#include "workbench/data/DataTable.h"

namespace quillara {

/// A table as comma separated text in UTF-8: names first, one line a case, missing data as empty fields. Names of cases
/// are the first column, Case (or Case_2, Case_3, ..., the first name that no variable has). Labels and
/// texts stand in place of a variable's values when every value that occurs has one of its own; otherwise a text
/// variable gives its texts and any other its numbers, in the shortest form that reads back as the same double.
/// Dates are YYYY-MM-DD, times of day HH:MM:SS. Not kept: long names, descriptions, value labels beside those shown,
/// the title text, the weight's declaration, parts of a day or second. Texts are written as they stand; on reading,
/// blanks around one don't count, and one that is among the texts for missing data (NA, None, ...) is missing unless
/// ReadOptions says otherwise.
/// Throws DataError naming the variable when a value that isn't missing would be an empty field; Interrupted when
/// `cancelled`, asked now and then, answers true.
[[nodiscard]] std::string TextOfTable(const DataTable& table, const std::function<bool()>& cancelled = {});

/// Throws ReadBackDifference, naming the variable, when a file doesn't hold the fields that TextOfTable gives, but for
/// blanks around them; DataError when it can't be read, Interrupted when cancelled.
void CheckDelimitedFile(const DataTable& table, const std::string& path, const std::function<bool()>& cancelled = {});

}  // namespace quillara
