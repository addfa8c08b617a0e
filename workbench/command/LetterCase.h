#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// A text in UTF-8 with all its letters, of any script, in one case; for comparing only.
[[nodiscard]] std::wstring WithoutLetterCase(std::string_view text);

}  // namespace quillara
