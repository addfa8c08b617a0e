// The log of the host: lines are kept until the application has a log of its own.

#include "host/Log.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include <unistd.h>

#include "workbench/hosting/LogFile.h"

namespace {

class LogCache final : public CLogCache {
  public:
    void LogEntry(std::uint32_t process, std::uint32_t thread, int level, const std::string& text,
                  std::uint32_t code) override {
        quillara::KeepLogLine({process, thread, level, text, code});
    }
};

}  // namespace

COrvMainApp* GetOrvMainApp() {
    return quillara::OpenLog();
}

CLogCache& GetLogCache() {
    static LogCache& cache = *new LogCache;  // lines may come in while the program ends
    return cache;
}

std::uint32_t GetCurrentProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

std::uint32_t GetCurrentThreadId() {
    return static_cast<std::uint32_t>(gettid());
}

void LogMessage(int level, std::uint32_t code, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    COrvMainApp* application = GetOrvMainApp();
    if (application != nullptr && application->Logging != 0) {
        application->LogEntry(GetCurrentProcessId(), GetCurrentThreadId(), level, text, code);
    } else {
        GetLogCache().LogEntry(GetCurrentProcessId(), GetCurrentThreadId(), level, text, code);
    }
}
