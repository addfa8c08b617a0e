#pragma once

#include "workbench/documents/ResultDocument.h"

class CAnalysisSupport;

namespace quillara {

/// Makes a document of a result and sends it on its way: the analysis may take it; else it goes to who takes the
/// documents of the analysis. Throws nothing but an allocation failure.
void RouteResult(CAnalysisSupport& analysis, DocumentContent content);

}  // namespace quillara
