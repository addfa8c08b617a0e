#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace quillara {

/// A file isn't any more what it was when it was opened.
class FileChanged : public std::runtime_error {
  public:
    FileChanged() : std::runtime_error("The file changes while it is read.") {}
};

/// The bytes of a text, in memory or in a file, read piece by piece from any thread. A file isn't mapped: where another
/// program cuts it short, a mapped page that is gone would end this one.
class TextSource {
  public:
    /// A text that is there.
    explicit TextSource(std::string text);
    /// A regular file. Throws DataError, naming it, when it can't be opened.
    static TextSource OfFile(const std::string& path);

    [[nodiscard]] std::size_t Size() const { return Length; }
    /// Copies `length` bytes from `offset` on, all within the text. Throws FileChanged when the file has become
    /// shorter, DataError when it can't be read.
    void Read(std::size_t offset, std::size_t length, char* to) const;
    /// At most `length` bytes from `offset` on.
    [[nodiscard]] std::string Piece(std::size_t offset, std::size_t length) const;
    /// Throws FileChanged when the file has been written to since it was opened.
    void RequireUnchanged() const;

  private:
    class OpenFile;

    TextSource() = default;

    std::string Text;
    std::shared_ptr<const OpenFile> File;  // null: the text is in memory
    std::size_t Length = 0;
};

}  // namespace quillara
