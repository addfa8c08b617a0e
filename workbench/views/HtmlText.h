#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// A text of the user as it stands on the page, for contents and for attributes in double quotes.
[[nodiscard]] std::string Escaped(std::string_view text);

/// An element; `attributes` may be empty.
[[nodiscard]] std::string Element(const std::string& name, const std::string& attributes, const std::string& contents);

}  // namespace quillara
