#include "automation/CrashReport.h"

#include <filesystem>
#include <system_error>

#include "host/Exceptions.h"
#include "host/Log.h"
#include "host/PlatformServices.h"

namespace {

// The functions of the report library, as it declares them.

using StackTrace = void (*)(void* process, int depth, void* thread, void* context, void* reserved);
using GenerateSilentErrorReport = void (*)(void* state, const char* folder, const FaultPointers* pointers,
                                           const char* what);

constexpr int WholeStack = 9999;
constexpr int FailureLevel = 1;

/// A function of the report library; null without it.
template <typename Function>
Function FromLibrary(const char* name) {
    return reinterpret_cast<Function>(GetProcAddress(LoadLibraryA("CrashRpt"), name));
}

}  // namespace

std::string ErrorFolder() {
    const std::string state = StateFolder();
    if (state.empty()) {
        return {};
    }
    const std::filesystem::path folder = std::filesystem::path(state) / "quillara" / "errors";
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    return std::filesystem::is_directory(folder, failure) ? folder.string() : std::string();
}

void CrashReport(const std::string& folder, const FaultPointers& pointers, const char* what) {
    if (const auto trace = FromLibrary<StackTrace>("StackTrace")) {
        trace(nullptr, WholeStack, nullptr, pointers.Context, nullptr);
    }
    if (const auto report = FromLibrary<GenerateSilentErrorReport>("GenerateSilentErrorReport")) {
        report(nullptr, folder.c_str(), &pointers, what);
        LogMessage(FailureLevel, 0, "Process dump was generated in [%s]", folder.c_str());
    }
}
