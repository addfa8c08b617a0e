// Services of the operating system, and what the framework keeps of modules.

#include "host/PlatformServices.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <dlfcn.h>

#include "host/ModuleState.h"

namespace {

thread_local ModuleState* Entered = nullptr;

/// The folder of an environment variable that holds a whole path; else one below the home folder; else nothing.
std::filesystem::path FolderOf(const char* variable, const char* belowHome) {
    const char* folder = std::getenv(variable);
    if (folder != nullptr && std::filesystem::path(folder).is_absolute()) {
        return folder;
    }
    const char* home = std::getenv("HOME");
    return home == nullptr || *home == '\0' ? std::filesystem::path() : std::filesystem::path(home) / belowHome;
}

}  // namespace

ModuleState* CurrentModuleState() {
    return Entered;
}

ModuleState* SetCurrentModuleState(ModuleState* state) {
    return std::exchange(Entered, state);
}

void* LoadLibraryA(const char* name) {
    return dlopen(("lib" + std::string(name) + ".so").c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* GetProcAddress(void* library, const char* name) {
    return library == nullptr ? nullptr : dlsym(library, name);
}

std::string StateFolder() {
    const std::filesystem::path folder = FolderOf("XDG_STATE_HOME", ".local/state");
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return std::filesystem::is_directory(folder, error) ? folder.string() : std::string();
}
