#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillara {

inline constexpr std::size_t LongTextKeyWidth = 8;
inline constexpr char LongTextKeyMark = '\x01';  ///< first byte of every key, and in no other text

/// The 8-byte key of a text of more than 8 bytes: byte 0x01 and 7 characters of a 64-letter alphabet from a hash
/// of the text; a text already registered gives its key again, and two texts never share one. Shorter texts give
/// themselves. Thread-safe.
[[nodiscard]] std::string LongTextKey(std::string_view text);

/// The text that a key stands for; a text that is no registered key, unchanged. Thread-safe.
[[nodiscard]] std::string LongTextOf(std::string_view key);

/// Expands every key anywhere inside a text, and the keys inside what comes of it. Thread-safe.
[[nodiscard]] std::string Replace8CharGrow(std::string_view text);

/// Drops a UTF-8 character, or a key, that a byte-wise cut has left unfinished at the end of a text.
[[nodiscard]] std::string WithoutBrokenTail(std::string text);

}  // namespace quillara
