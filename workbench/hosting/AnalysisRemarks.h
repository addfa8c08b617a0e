#pragma once

#include "workbench/documents/Remarks.h"

class CAnalysisDoc;

namespace quillara {

/// Makes a remark on the analysis of a document; who listens hears it once.
void Notice(CAnalysisDoc* document, Remark remark);

/// The remarks on it so far.
[[nodiscard]] const Remarks& RemarksOn(CAnalysisDoc* document);

}  // namespace quillara
