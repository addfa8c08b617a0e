#include <cstdlib>

#include "host/AnalysisSupport.h"
#include "workbench/support/AnalysisState.h"

int CAnalysisSupport::AllocMem(void** address, unsigned long size) {
    *address = nullptr;
    quillara::AllocationRecord* record = Document == nullptr ? nullptr : &CAnalysisDoc::StateOf(Document).Memory;
    if (record != nullptr && ++record->Calls == record->FailingCall) {
        return 1;
    }
    *address = std::calloc(size == 0 ? 1 : size, 1);
    if (*address == nullptr) {
        return 1;
    }
    if (record != nullptr) {
        record->Live.insert(*address);
    }
    return 0;
}

void CAnalysisSupport::FreeMem(void* address) {
    if (Document != nullptr) {
        CAnalysisDoc::StateOf(Document).Memory.Live.erase(address);
    }
    std::free(address);
}
