// An analysis is the current one of the host while a script works with it.

#include "host/ScriptValues.h"
#include "workbench/hosting/CurrentAnalysis.h"

CEnterAnalysisContext::CEnterAnalysisContext(CAnalysisSupport& analysis)
    : Former(quillara::SetCurrentAnalysis(&analysis)) {}

CEnterAnalysisContext::~CEnterAnalysisContext() {
    quillara::SetCurrentAnalysis(Former);
}
