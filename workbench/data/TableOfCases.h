#pragma once

#include <span>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// A table of those cases of another whose place holds CaseResult::Use, with all that its variables have; texts that
/// none of them has are gone. `results` has one for each case.
[[nodiscard]] DataTable TableOfCases(const DataTable& table, std::span<const CaseResult> results);

}  // namespace quillara
