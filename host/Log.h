#pragma once

#include <cstdint>
#include <string>

// The log of the host.

/// The application.
class COrvMainApp {
  public:
    /// Writes a line to the log of the application.
    virtual void LogEntry(std::uint32_t process, std::uint32_t thread, int level, const std::string& text,
                          std::uint32_t code) = 0;

    std::uint8_t Logging = 0;  ///< not 0: the log of the application is open

  protected:
    ~COrvMainApp() = default;
};

/// Keeps the lines of the log until the application has one of its own.
class CLogCache {
  public:
    virtual void LogEntry(std::uint32_t process, std::uint32_t thread, int level, const std::string& text,
                          std::uint32_t code) = 0;

  protected:
    ~CLogCache() = default;
};

/// The application object; null when there is none.
COrvMainApp* GetOrvMainApp();
CLogCache& GetLogCache();

std::uint32_t GetCurrentProcessId();
std::uint32_t GetCurrentThreadId();

/// Logs a text made from a format of printf: in the application's log when that is open, else in the cache. `code` is
/// the last argument of the entry.
[[gnu::format(printf, 3, 4)]] void LogMessage(int level, std::uint32_t code, const char* format, ...);
