#pragma once

#include <vector>

#include "workbench/data/FormulaNotice.h"
#include "workbench/documents/Remarks.h"

class CAnalysisDoc;

namespace quillara {

/// Makes a remark on the analysis of a document; who listens hears it once.
void Notice(CAnalysisDoc* document, Remark remark);

/// Remarks on formulas that it begins with or is given.
void Notice(CAnalysisDoc* document, const std::vector<FormulaNotice>& notices);

/// The remarks on it so far.
[[nodiscard]] const Remarks& RemarksOn(CAnalysisDoc* document);

}  // namespace quillara
