#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillara {

/// One SVG text of two that differ in their colours only, of which the page shows each reader the right ones. Nothing
/// when they differ in more.
[[nodiscard]] std::optional<std::string> InBothThemes(std::string_view light, std::string_view dark);

/// The style rules that the pictures in the contents of a page need for their colours.
[[nodiscard]] std::string ThemeRules(std::string_view contents);

}  // namespace quillara
