#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// An SVG file as a picture within an HTML page, with a title for those who can't see it, which stands on the page
/// under `id`. What says nothing new is left out.
[[nodiscard]] std::string HtmlPicture(std::string_view svg, const std::string& title, const std::string& id);

}  // namespace quillara
