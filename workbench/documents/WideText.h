#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// A text of UTF-8 as UTF-16. A byte that belongs to no character becomes the replacement character.
[[nodiscard]] std::u16string WideText(std::string_view text);

}  // namespace quillara
