#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Gives the variables of a table the labels and descriptions that a dictionary file tells: delimited text with the
/// columns variable, value, label and description, in any order, all but variable optional. A row without a value is
/// about the variable itself. An empty label or description says nothing; of two rows for one value the later counts;
/// a text that no case has is passed over. `maxMemory` is as in ReadOptions.
/// Throws DataError, and the table may be partly changed, when the file can't be read, has no column `variable`, names
/// a variable that isn't there, or a value that is no value of its variable's kind.
void ApplyDictionary(DataTable& table, const std::string& path, std::optional<std::size_t> maxMemory = {});

}  // namespace quillara
