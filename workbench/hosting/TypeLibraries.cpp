#include "workbench/hosting/TypeLibraries.h"

#include <mutex>
#include <set>
#include <string>

#include "host/AnalysisContext.h"

namespace {

struct TypeLibraryRegister {
    std::mutex Guard;
    std::set<std::string, std::less<>> Names;
};

/// Made at its first use: modules register while they are loaded, maybe before anything of the host is ready.
TypeLibraryRegister& TheTypeLibraries() {
    static TypeLibraryRegister& theRegister = *new TypeLibraryRegister;
    return theRegister;
}

}  // namespace

void OrvOleRegisterTypeLib(const char* name) {
    const std::lock_guard lock(TheTypeLibraries().Guard);
    TheTypeLibraries().Names.emplace(name);
}

bool quillara::IsTypeLibraryRegistered(std::string_view name) {
    const std::lock_guard lock(TheTypeLibraries().Guard);
    return TheTypeLibraries().Names.contains(name);
}
