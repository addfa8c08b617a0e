#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillara {

/// How long a text of a file may be: both limits count.
struct TextRoom {
    std::size_t Bytes = 0;
    std::size_t Characters = 0;  ///< of UTF-8
};

/// The longest beginning of a text that has room, without blanks at its end: files fill their fields with blanks.
/// No UTF-8 character is cut in two.
[[nodiscard]] std::string Fitted(std::string_view text, const TextRoom& room);

}  // namespace quillara
