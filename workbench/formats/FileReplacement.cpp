#include "workbench/formats/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/RemovalOnSignal.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {
namespace {

[[noreturn]] void ThrowUnwritable(const std::string& path, int error) {
    throw DataError("\"" + path + "\" can't be written: " + std::strerror(error) + ".");
}

bool WriteAll(int descriptor, std::string_view content, const WorkMonitor& monitor) {
    constexpr std::size_t piece = 4 << 20;
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), std::min(content.size(), piece));
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        monitor.Check();
    }
    return true;
}

/// The permissions of the file to be replaced, or those of a new file of this process.
mode_t PermissionsFor(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        return status.st_mode & 07777;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/// A descriptor that is closed when its owner goes.
class OpenFile {
  public:
    explicit OpenFile(int descriptor) : Descriptor(descriptor) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (IsOpen()) {
            close(Descriptor);
        }
    }

    [[nodiscard]] bool IsOpen() const { return Descriptor >= 0; }
    [[nodiscard]] int Number() const { return Descriptor; }
    /// False and errno when it fails.
    [[nodiscard]] bool Close() { return close(std::exchange(Descriptor, -1)) == 0; }

  private:
    int Descriptor;
};

using Producer = std::function<void(const ByteSink& write)>;

/// Writes what a producer gives; `path` is what errors call the file. Small pieces are put together.
void WriteProduced(int descriptor, const std::string& path, const Producer& produce, const WorkMonitor& monitor) {
    constexpr std::size_t enough = 1 << 20;
    std::string pieces;
    const auto write = [&](std::string_view bytes) {
        if (!WriteAll(descriptor, bytes, monitor)) {
            ThrowUnwritable(path, errno);
        }
    };
    produce([&](std::string_view bytes) {
        if (pieces.size() + bytes.size() >= enough) {
            write(pieces);
            pieces.clear();
        }
        if (bytes.size() >= enough) {
            write(bytes);
        } else {
            pieces += bytes;
        }
    });
    write(pieces);
}

void WriteToDevice(const std::string& path, const Producer& produce, const WorkMonitor& monitor) {
    // Opened anew, the standard output would begin at its beginning where it is a file.
    const OpenFile file(path == StandardOutputPath ? fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                                   : open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file.IsOpen()) {
        ThrowUnwritable(path, errno);
    }
    WriteProduced(file.Number(), path, produce, monitor);
}

/// A file under a name of its own in the folder of the target; it goes unless it is moved onto the target.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::filesystem::path& target)
        : Name((target.parent_path() / ".quillara-XXXXXX").string()),
          File(Removal.Watch(Name, [this] { return mkostemp(Name.data(), O_CLOEXEC); })) {
        IsThere = File.IsOpen();
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (IsThere) {
            unlink(Name.c_str());
        }
    }

    /// Each of the three gives false and errno when it fails.
    [[nodiscard]] bool Begin(mode_t permissions) { return IsThere && fchmod(File.Number(), permissions) == 0; }
    [[nodiscard]] bool Finish() { return fsync(File.Number()) == 0 && File.Close(); }
    [[nodiscard]] bool MoveTo(const std::string& target) {
        IsThere = !Removal.EndBy([&] { return rename(Name.c_str(), target.c_str()) == 0; });
        return !IsThere;
    }

    [[nodiscard]] const std::string& Path() const { return Name; }
    [[nodiscard]] int Number() const { return File.Number(); }

  private:
    RemovalOnSignal Removal;
    std::string Name;
    OpenFile File;
    bool IsThere = false;
};

/// Brings the renaming to the disk, where the file system can.
void SyncFolder(const std::filesystem::path& folder) {
    const std::string name = folder.empty() ? "." : folder.string();
    const OpenFile opened(open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen()) {
        fsync(opened.Number());
    }
}

/// The file behind a link, there or not, so that the link outlives the replacement.
std::string ResolveLinks(const std::string& path) {
    constexpr int longestChain = 40;  // as the system follows
    std::error_code error;
    std::filesystem::path real = path;
    for (int i = 0; i < longestChain && std::filesystem::is_symlink(real, error); ++i) {
        // A relative target begins in the link's folder; an absolute one stands alone.
        real = real.parent_path() / std::filesystem::read_symlink(real, error);
    }
    return real.string();
}

std::filesystem::path PlaceOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(ResolveLinks(path), error);
    const std::filesystem::path place = std::filesystem::weakly_canonical(absolute, error);
    return error ? absolute : place;
}

}  // namespace

bool IsDeviceOrPipe(const std::string& path) {
    struct stat status {};
    return path == StandardOutputPath ||
           (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode));
}

bool NameOneFile(const std::string& path, const std::string& other) {
    std::error_code error;
    return PlaceOf(path) == PlaceOf(other) || std::filesystem::equivalent(path, other, error);
}

void ReplaceFile(const std::string& path, const Producer& produce, const std::function<bool()>& cancelled,
                 const std::function<void(const std::string& temporary)>& check) {
    const WorkMonitor monitor({}, cancelled);
    if (IsDeviceOrPipe(path)) {
        WriteToDevice(path, produce, monitor);
        return;
    }
    const std::string target = ResolveLinks(path);
    // A rename would pass over the protection of the old file.
    if (access(target.c_str(), W_OK) != 0 && errno != ENOENT) {
        ThrowUnwritable(path, errno);
    }
    const mode_t permissions = PermissionsFor(target);
    int error = 0;
    {
        TemporaryFile file(target);
        bool isFinished = file.Begin(permissions);
        if (isFinished) {
            WriteProduced(file.Number(), path, produce, monitor);
            isFinished = file.Finish();
        }
        error = isFinished ? 0 : errno;
        if (isFinished && check) {
            check(file.Path());
        }
        monitor.Check();
        if (isFinished && !file.MoveTo(target)) {
            error = errno;
        } else if (isFinished) {
            SyncFolder(std::filesystem::path(target).parent_path());
        }
    }
    if (error != 0) {
        ThrowUnwritable(path, error);
    }
}

void ReplaceFile(const std::string& path, std::string_view content, const std::function<bool()>& cancelled,
                 const std::function<void(const std::string& temporary)>& check) {
    ReplaceFile(
        path, [&](const ByteSink& write) { write(content); }, cancelled, check);
}

}  // namespace quillara
