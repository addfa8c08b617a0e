#pragma once

#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/documents/Remarks.h"

namespace quillara {

/// What looks odd about a table that was read from delimited text, with or without names in its first record: a single
/// variable, names that look like values, several without a name, texts that are numbers with separators of thousands,
/// percent signs or signs of a currency.
[[nodiscard]] std::vector<Remark> RemarksOnDelimited(const DataTable& table, bool hasNames);

}  // namespace quillara
