#include "workbench/formats/TextSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "workbench/data/Errors.h"

namespace quillara {

/// A file with its state at opening.
class TextSource::OpenFile {
  public:
    explicit OpenFile(std::string path) : Path(std::move(path)), Descriptor(open(Path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (Descriptor < 0) {
            ThrowUnreadable();
        }
        AtOpening = Status();
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(Descriptor); }

    [[nodiscard]] std::size_t Size() const { return static_cast<std::size_t>(std::max<off_t>(AtOpening.st_size, 0)); }

    void Read(std::size_t offset, std::size_t length, char* to) const {
        while (length > 0) {
            const ssize_t got = pread(Descriptor, to, length, static_cast<off_t>(offset));
            if (got == 0) {
                throw FileChanged();
            }
            if (got < 0 && errno != EINTR) {
                ThrowUnreadable();
            }
            const std::size_t bytes = got < 0 ? 0 : static_cast<std::size_t>(got);
            offset += bytes;
            length -= bytes;
            to += bytes;
        }
    }

    [[nodiscard]] bool IsUnchanged() const {
        const struct stat now = Status();
        return now.st_size == AtOpening.st_size && now.st_mtim.tv_sec == AtOpening.st_mtim.tv_sec &&
               now.st_mtim.tv_nsec == AtOpening.st_mtim.tv_nsec;
    }

  private:
    [[noreturn]] void ThrowUnreadable() const {
        throw DataError("\"" + Path + "\" can't be read: " + std::strerror(errno) + ".");
    }

    [[nodiscard]] struct stat Status() const {
        struct stat status {};
        if (fstat(Descriptor, &status) != 0) {
            ThrowUnreadable();
        }
        return status;
    }

    std::string Path;
    int Descriptor;
    struct stat AtOpening {};
};

TextSource::TextSource(std::string text) : Text(std::move(text)), Length(Text.size()) {}

TextSource TextSource::OfFile(const std::string& path) {
    TextSource source;
    source.File = std::make_shared<const OpenFile>(path);
    source.Length = source.File->Size();
    return source;
}

void TextSource::Read(std::size_t offset, std::size_t length, char* to) const {
    if (File) {
        File->Read(offset, length, to);
    } else {
        std::copy_n(Text.data() + offset, length, to);
    }
}

std::string TextSource::Piece(std::size_t offset, std::size_t length) const {
    std::string piece(std::min(length, Length - std::min(offset, Length)), '\0');
    Read(offset, piece.size(), piece.data());
    return piece;
}

void TextSource::RequireUnchanged() const {
    if (File && !File->IsUnchanged()) {
        throw FileChanged();
    }
}

}  // namespace quillara
