#include <cstdlib>
#include <new>
#include <utility>

#include "host/AnalysisSupport.h"
#include "workbench/hosting/AllocationRecord.h"
#include "workbench/hosting/Surroundings.h"

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

int Lacking(CAnalysisDoc* document) {
    if (document != nullptr) {
        quillara::SurroundingsOf(document).ReportMemoryLack();
    }
    return 1;
}

}  // namespace

int CAnalysisSupport::AllocMem(void** address, unsigned long size) {
    *address = nullptr;
    quillara::AllocationRecord* record = quillara::MemoryOf(Document);
    if (record != nullptr && ++record->Calls == record->FailingCall) {
        return Lacking(Document);
    }
    *address = std::calloc(size == 0 ? 1 : size, 1);
    if (*address == nullptr) {
        return Lacking(Document);
    }
    if (record != nullptr && !Remember(*record, *address)) {
        std::free(std::exchange(*address, nullptr));
        return Lacking(Document);
    }
    return 0;
}

void CAnalysisSupport::FreeMem(void* address) {
    if (quillara::AllocationRecord* record = quillara::MemoryOf(Document)) {
        record->Live.erase(address);
    }
    std::free(address);
}
