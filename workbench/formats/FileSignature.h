#pragma once

#include <cstddef>
#include <string_view>

namespace quillara {

/// What a file holds, as far as its first bytes and its name tell.
struct FileContent {
    std::string_view Extension{};  ///< the one that files of this content have; empty: maybe delimited text
    std::string_view ForeignKind{};  ///< what it is when it can't be read: "a zip archive"
    std::string_view Advice{};  ///< ForeignKind only, what to do: "unpack it first"
};

/// How many bytes of a file FileContentOf wants, where there are so many.
inline constexpr std::size_t SignatureLength = 600;

/// The content of a file with these first bytes and this extension (in small letters).
[[nodiscard]] FileContent FileContentOf(std::string_view bytes, std::string_view extension);

}  // namespace quillara
