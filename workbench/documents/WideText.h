#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// A text of UTF-8 as UTF-16. A byte that belongs to no character becomes the replacement character.
[[nodiscard]] std::u16string WideText(std::string_view text);

/// A text of UTF-16 as UTF-8. Half of a pair that stands alone becomes the replacement character.
[[nodiscard]] std::string NarrowText(std::u16string_view text);

}  // namespace quillara
