#include "workbench/formats/FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

[[noreturn]] void ThrowUnreadable(const std::string& path) {
    throw DataError("\"" + path + "\" can't be read: " + std::strerror(errno) + ".");
}

class InputFile {
  public:
    explicit InputFile(const std::string& path) : Path(path), Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (Descriptor < 0) {
            ThrowUnreadable(path);
        }
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() { close(Descriptor); }

    [[nodiscard]] std::size_t Size() const {
        struct stat status {};
        return fstat(Descriptor, &status) == 0 && status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    }

    /// Appends what is left of the file, until there are `length` bytes; whether the file ended before.
    [[nodiscard]] bool ReadTo(std::size_t length, std::string& bytes, WorkMonitor& monitor) {
        std::size_t filled = bytes.size();
        if (length > filled) {
            monitor.RequireMemory(length);
            bytes.resize(length);
        }
        while (filled < length) {
            const std::size_t got = Read(bytes.data() + filled, length - filled, monitor);
            if (got == 0) {
                bytes.resize(filled);
                return true;
            }
            filled += got;
            monitor.Advance(got);
        }
        return false;
    }

  private:
    /// Bytes read; 0 at the end of the file.
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size, WorkMonitor& monitor) {
        ssize_t got = read(Descriptor, buffer, std::min(size, Piece));
        while (got < 0 && errno == EINTR) {
            monitor.Check();
            got = read(Descriptor, buffer, std::min(size, Piece));
        }
        if (got < 0) {
            ThrowUnreadable(Path);
        }
        return static_cast<std::size_t>(got);
    }

    static constexpr std::size_t Piece = 4 << 20;

    const std::string& Path;
    int Descriptor;
};

}  // namespace

std::string ReadBytes(const std::string& path, WorkMonitor& monitor, std::size_t limit) {
    InputFile file(path);
    std::string bytes;
    (void)file.ReadTo(limit, bytes, monitor);
    return bytes;
}

std::string ReadBytes(const std::string& path, WorkMonitor& monitor, const BeginningCheck& check) {
    InputFile file(path);
    std::string bytes;
    bool isWhole = file.ReadTo(BeginningLength, bytes, monitor);
    check(bytes);
    // A pipe tells no size; a file may grow while it is read: the end is where a read gives nothing.
    for (std::size_t room = file.Size() + 1; !isWhole; room = 2 * room + BeginningLength) {
        isWhole = file.ReadTo(room, bytes, monitor);
    }
    return bytes;
}

std::string NameOfFile(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

std::string ExtensionOf(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    if (!extension.empty()) {
        extension.erase(0, 1);
    }
    return InSmallLetters(extension);
}

}  // namespace quillara
