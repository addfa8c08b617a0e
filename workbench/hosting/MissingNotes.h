#pragma once

#include <vector>

#include "workbench/documents/SpreadsheetDocument.h"

class CAnalysisDoc;

namespace quillara {

/// Why the cases of a frequency table that has just arrived lack a value, counted as the table counts; what it has
/// deleted casewise stands behind. Empty for another table, and for variables whose missing data isn't told apart.
[[nodiscard]] std::vector<MissingCount> MissingIn(CAnalysisDoc* document, const SpreadsheetDocument& table);

}  // namespace quillara
