#include "workbench/hosting/AnalysisModule.h"

#include <dlfcn.h>

#include <filesystem>
#include <vector>

#include "host/AnalysisContext.h"
#include "host/ModuleState.h"
#include "workbench/data/Errors.h"
#include "workbench/hosting/AnalysisBinding.h"

namespace quillara {

namespace {

constexpr char EntryName[] = "Orv6NewAnalysis";
constexpr char DrillDownFile[] = "libqladrilldown.so";

/// The file that holds the host's code: the library of the workbench's core.
std::string FileOfHost() {
    Dl_info info{};
    const void* ownCode = reinterpret_cast<const void*>(&FileOfHost);
    return dladdr(ownCode, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
}

/// A module takes the host's functions from the global symbols. The host's library is among them only if the program
/// was linked with it, not when an interpreter has loaded it.
void OfferHostFunctions() {
    if (void* host = dlopen(FileOfHost().c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_GLOBAL)) {
        dlclose(host);  // stays loaded, and stays global
    }
}

std::string LastError() {
    const char* text = dlerror();
    return text == nullptr ? "unknown reason" : text;
}

/// A library that objects in other hands still need, or needed.
struct HeldLibrary {
    void* Library;
    const CAnalysisContext* Context;

    [[nodiscard]] bool IsNeeded() const { return Context != nullptr && Context->State()->Locks > 0; }
};

std::vector<HeldLibrary>& HeldLibraries() {
    static std::vector<HeldLibrary> held;
    return held;
}

void UnloadFreeLibraries() {
    std::erase_if(HeldLibraries(), [](const HeldLibrary& held) {
        const bool isFree = !held.IsNeeded();
        if (isFree) {
            dlclose(held.Library);
        }
        return isFree;
    });
}

}  // namespace

AnalysisModule::AnalysisModule(const std::string& path) {
    UnloadFreeLibraries();
    OfferHostFunctions();
    Library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (Library == nullptr) {
        throw DataError("The analysis module can't be loaded: " + LastError());
    }
    Entry = reinterpret_cast<CAnalysisSupport* (*)()>(dlsym(Library, EntryName));
    if (Entry == nullptr) {
        const std::string reason = LastError();
        dlclose(Library);
        throw DataError("This library is no analysis module: " + reason);
    }
}

AnalysisModule::~AnalysisModule() {
    HeldLibraries().push_back({Library, Context});
    UnloadFreeLibraries();
}

std::unique_ptr<CAnalysisSupport> AnalysisModule::NewAnalysis() {
    std::unique_ptr<CAnalysisSupport> analysis(Entry());
    if (analysis == nullptr) {
        throw DataError("There is not enough memory to start the analysis; close other programs and try again.");
    }
    Context = &AnalysisBinding::Context(*analysis);
    return analysis;
}

std::string AnalysisModule::DrillDownPath() {
    const std::filesystem::path beside = std::filesystem::path(FileOfHost()).parent_path() / DrillDownFile;
    std::error_code ignored;
    return std::filesystem::exists(beside, ignored) ? beside.string() : DrillDownFile;
}

}  // namespace quillara
