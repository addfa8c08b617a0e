#include "workbench/hosting/AnalysisModule.h"

#include <dlfcn.h>

#include <filesystem>

#include "workbench/data/Errors.h"

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

}  // namespace

AnalysisModule::AnalysisModule(const std::string& path) {
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
    dlclose(Library);
}

std::unique_ptr<CAnalysisSupport> AnalysisModule::NewAnalysis() const {
    std::unique_ptr<CAnalysisSupport> analysis(Entry());
    if (analysis == nullptr) {
        throw DataError("There is not enough memory to start the analysis; close other programs and try again.");
    }
    return analysis;
}

std::string AnalysisModule::DrillDownPath() {
    const std::filesystem::path beside = std::filesystem::path(FileOfHost()).parent_path() / DrillDownFile;
    std::error_code ignored;
    return std::filesystem::exists(beside, ignored) ? beside.string() : DrillDownFile;
}

}  // namespace quillara
