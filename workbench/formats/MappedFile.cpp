#include "workbench/formats/MappedFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <limits>

#include "workbench/data/Errors.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/RemovalOnSignal.h"

namespace quillara {
namespace {

/// A mapped file that the handler of the signal knows.
struct Watched {
    std::atomic<std::uintptr_t> Begin = 0;  // 0: free
    std::atomic<std::uintptr_t> End = 0;
    std::atomic<const std::string*> Line = nullptr;
};

constexpr std::size_t MostWatched = 256;
std::array<Watched, MostWatched> WatchedFiles;

// The handler calls nothing but what a handler may.
void EndAtLostPage(int signal, siginfo_t* about, void* /*context*/) {
    const auto place = reinterpret_cast<std::uintptr_t>(about->si_addr);
    for (const Watched& file : WatchedFiles) {
        if (file.Begin <= place && place < file.End) {
            const std::string& line = *file.Line.load();
            [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
            RemoveUnfinishedFile();
            _exit(1);
        }
    }
    // It was none of the mapped files: the signal comes again and does what it does.
    std::signal(signal, SIG_DFL);
}

/// Whoever else handles the signal goes on to do so.
void WatchForLostPages() {
    struct sigaction before {};
    const bool isFree =
        sigaction(SIGBUS, nullptr, &before) == 0 && (before.sa_flags & SA_SIGINFO) == 0 && before.sa_handler == SIG_DFL;
    if (isFree) {
        struct sigaction action {};
        action.sa_sigaction = EndAtLostPage;
        action.sa_flags = SA_SIGINFO;
        sigaction(SIGBUS, &action, nullptr);
    }
}

/// A file that is mapped while this lives.
class Mapping {
  public:
    Mapping(const std::string& path, int descriptor, std::size_t bytes)
        : LineAtLoss("quillara: \"" + path + "\" was cut short while it was in use.\n"), Length(bytes) {
        Begin = mmap(nullptr, Length, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (IsThere()) {
            WatchForLostPages();
            Watch();
        }
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() {
        if (IsThere()) {
            munmap(Begin, Length);
            Unwatch();
        }
    }

    /// False, and errno, when the file can't be mapped.
    [[nodiscard]] bool IsThere() const { return Begin != MAP_FAILED; }
    [[nodiscard]] std::string_view Bytes() const { return {static_cast<const char*>(Begin), Length}; }

  private:
    void Watch() {
        constexpr auto taken = std::numeric_limits<std::uintptr_t>::max();  // no address is so high
        for (Watched& file : WatchedFiles) {
            std::uintptr_t free = 0;
            if (file.Begin.compare_exchange_strong(free, taken)) {
                Place = &file;
                file.Line = &LineAtLoss;
                file.End = reinterpret_cast<std::uintptr_t>(Begin) + Length;
                file.Begin = reinterpret_cast<std::uintptr_t>(Begin);
                return;
            }
        }
    }

    void Unwatch() {
        if (Place != nullptr) {
            Place->End = 0;
            Place->Begin = 0;
        }
    }

    std::string LineAtLoss;
    void* Begin = MAP_FAILED;
    std::size_t Length;
    Watched* Place = nullptr;
};

class Descriptor {
  public:
    explicit Descriptor(const std::string& path) : Opened(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (Opened >= 0) {
            close(Opened);
        }
    }

    [[nodiscard]] int Number() const { return Opened; }

  private:
    int Opened;
};

bool IsRegular(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
}

FileImage ImageOf(std::string bytes) {
    const auto owner = std::make_shared<const std::string>(std::move(bytes));
    return {.Bytes = *owner, .Owner = owner};
}

}  // namespace

FileImage MapFile(const std::string& path) {
    WorkMonitor monitor;
    if (!IsRegular(path)) {
        return ImageOf(ReadBytes(path, monitor, [](std::string_view /*beginning*/) {}));
    }
    const Descriptor file(path);
    struct stat status {};
    if (file.Number() < 0 || fstat(file.Number(), &status) != 0) {
        throw DataError("\"" + path + "\" can't be read: " + std::strerror(errno) + ".");
    }
    const auto mapping = std::make_shared<const Mapping>(path, file.Number(), static_cast<std::size_t>(status.st_size));
    if (!mapping->IsThere()) {
        throw DataError("\"" + path + "\" can't be read: " + std::strerror(errno) + ".");
    }
    return {.Bytes = mapping->Bytes(), .Owner = mapping};
}

}  // namespace quillara
