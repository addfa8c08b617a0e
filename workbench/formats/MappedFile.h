#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quillara {

/// The bytes of a file and what keeps them where they are.
struct FileImage {
    std::string_view Bytes;
    std::shared_ptr<const void> Owner;
};

/// Maps a file into memory, so that its bytes are read when they are used; a pipe or device is read at once. Throws
/// DataError, naming the file, when it can't be opened or read.
/// Surprise: where another program cuts the file short while it is mapped, using what is gone ends this one, with
/// status 1 and a line on standard error that names the file. A file that is replaced stays as it was.
[[nodiscard]] FileImage MapFile(const std::string& path);

}  // namespace quillara
