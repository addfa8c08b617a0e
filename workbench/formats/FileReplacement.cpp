#include "workbench/formats/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

[[noreturn]] void ThrowUnwritable(const std::string& path, int error) {
    throw DataError("\"" + path + "\" can't be written: " + std::strerror(error) + ".");
}

bool WriteAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
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

bool IsDeviceOrPipe(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

void WriteToDevice(const std::string& path, std::string_view content) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) {
        ThrowUnwritable(path, errno);
    }
    const int error = WriteAll(descriptor, content) ? 0 : errno;
    close(descriptor);
    if (error != 0) {
        ThrowUnwritable(path, error);
    }
}

/// A file under a name of its own in the folder of the target; it goes unless it is moved onto the target.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::filesystem::path& target)
        : Name((target.parent_path() / ".quillara-XXXXXX").string()), Descriptor(mkostemp(Name.data(), O_CLOEXEC)) {
        IsThere = Descriptor >= 0;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (Descriptor >= 0) {
            close(Descriptor);
        }
        if (IsThere) {
            unlink(Name.c_str());
        }
    }

    /// Each of the three gives false and errno when it fails.
    [[nodiscard]] bool Write(std::string_view content, mode_t permissions) {
        return IsThere && fchmod(Descriptor, permissions) == 0 && WriteAll(Descriptor, content);
    }
    [[nodiscard]] bool Finish() {
        const bool synchronized = fsync(Descriptor) == 0;
        const int error = errno;
        const bool closed = close(Descriptor) == 0;
        Descriptor = -1;
        errno = synchronized ? errno : error;
        return synchronized && closed;
    }
    [[nodiscard]] bool MoveTo(const std::string& target) {
        IsThere = rename(Name.c_str(), target.c_str()) != 0;
        return !IsThere;
    }

  private:
    std::string Name;
    int Descriptor;
    bool IsThere = false;
};

/// The file behind a link, so that the link outlives the replacement.
std::string ResolveLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

}  // namespace

void ReplaceFile(const std::string& path, std::string_view content) {
    if (IsDeviceOrPipe(path)) {
        WriteToDevice(path, content);
        return;
    }
    const std::string target = ResolveLinks(path);
    // A rename would pass over the protection of the old file.
    if (access(target.c_str(), W_OK) != 0 && errno != ENOENT) {
        ThrowUnwritable(path, errno);
    }
    int error = 0;
    {
        TemporaryFile file(target);
        if (!file.Write(content, PermissionsFor(target)) || !file.Finish() || !file.MoveTo(target)) {
            error = errno;
        }
    }
    if (error != 0) {
        ThrowUnwritable(path, error);
    }
}

}  // namespace quillara
