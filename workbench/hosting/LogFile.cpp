#include "workbench/hosting/LogFile.h"

#include <ctime>
#include <fstream>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

#include "host/Log.h"
#include "host/PlatformServices.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr std::size_t MostKept = 1000;
constexpr std::uintmax_t LargestFile = 1 << 20;

std::deque<LogLine>& Kept() {
    static std::deque<LogLine>& lines = *new std::deque<LogLine>;
    return lines;
}

std::string TextOf(std::time_t time) {
    std::tm parts{};
    localtime_r(&time, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &parts)};
}

/// A line of the file; line ends within a text would make two of it.
std::string Written(const LogLine& line) {
    std::string text = TextOf(line.Time) + '\t' + std::to_string(line.Process) + '\t' + std::to_string(line.Thread) +
                       '\t' + std::to_string(line.Level) + '\t';
    for (const char sign : line.Text) {
        text += sign == '\n' || sign == '\r' ? ' ' : sign;
    }
    if (line.Code != 0) {
        text += "\t" + std::to_string(line.Code);
    }
    return text + '\n';
}

/// quillara/log in the user's state folder, with the folders on the way made as far as they can be; empty without one.
std::filesystem::path ProgramLogFile() {
    const std::string state = StateFolder();
    if (state.empty()) {
        return {};
    }
    const std::filesystem::path folder = std::filesystem::path(state) / "quillara";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder / "log";
}

class LoggingApplication final : public COrvMainApp {
  public:
    /// Without a file it is that of the program, which is looked for when there is something to write.
    explicit LoggingApplication(std::filesystem::path file = {}) : File(std::move(file)) { Logging = 1; }

    void LogEntry(std::uint32_t process, std::uint32_t thread, int level, const std::string& text,
                  std::uint32_t code) override {
        Write({process, thread, level, text, code});
    }

    void Write(const LogLine& line) try {
        File = File.empty() ? ProgramLogFile() : File;
        const std::string written = Written(line);
        MakeRoomFor(written.size());
        std::ofstream(File, std::ios::app) << written;
    } catch (const std::exception&) {
        // A log may not stop the work.
    }

    [[nodiscard]] bool CanWrite() const { return std::ofstream(File, std::ios::app).good(); }

  private:
    void MakeRoomFor(std::size_t bytes) const {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(File, error);
        if (!error && size + bytes > LargestFile) {
            std::error_code ignored;
            std::filesystem::rename(File, File.string() + ".1", ignored);
        }
    }

    std::filesystem::path File;
};

std::unique_ptr<LoggingApplication>& OpenedApplication() {
    static std::unique_ptr<LoggingApplication>& application = *new std::unique_ptr<LoggingApplication>;
    return application;
}

void Open(std::unique_ptr<LoggingApplication> application) {
    for (const LogLine& line : std::exchange(Kept(), {})) {
        application->Write(line);
    }
    OpenedApplication() = std::move(application);
}

}  // namespace

const std::deque<LogLine>& KeptLogLines() {
    return Kept();
}

void KeepLogLine(LogLine line) noexcept try {
    Kept().push_back(std::move(line));
    if (Kept().size() > MostKept) {
        Kept().pop_front();
    }
} catch (const std::bad_alloc&) {
    // Lost.
}

void ForgetKeptLogLines() {
    Kept().clear();
}

void OpenLogFile(const std::filesystem::path& file) {
    auto opened = std::make_unique<LoggingApplication>(file);
    if (!opened->CanWrite()) {
        throw DataError("The log can't be written: " + file.string());
    }
    Open(std::move(opened));
}

void OpenProgramLog() {
    if (OpenedApplication() == nullptr) {
        Open(std::make_unique<LoggingApplication>());
    }
}

void CloseLogFile() {
    OpenedApplication().reset();
}

COrvMainApp* OpenLog() {
    return OpenedApplication().get();
}

}  // namespace quillara
