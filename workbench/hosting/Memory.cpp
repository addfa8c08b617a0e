#include <cstdlib>
#include <new>
#include <utility>

#include "host/AnalysisSupport.h"
#include "workbench/hosting/AllocationRecord.h"

namespace {

/// False when there is no memory to note the address.
bool Remember(quillara::AllocationRecord& record, void* address) {
    try {
        record.Live.insert(address);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

int CAnalysisSupport::AllocMem(void** address, unsigned long size) {
    *address = nullptr;
    quillara::AllocationRecord* record = quillara::MemoryOf(Document);
    if (record != nullptr && ++record->Calls == record->FailingCall) {
        return 1;
    }
    *address = std::calloc(size == 0 ? 1 : size, 1);
    if (*address == nullptr) {
        return 1;
    }
    if (record != nullptr && !Remember(*record, *address)) {
        std::free(std::exchange(*address, nullptr));
        return 1;
    }
    return 0;
}

void CAnalysisSupport::FreeMem(void* address) {
    if (quillara::AllocationRecord* record = quillara::MemoryOf(Document)) {
        record->Live.erase(address);
    }
    std::free(address);
}
