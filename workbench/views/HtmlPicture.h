#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// What a page says of a picture.
struct PictureFrame {
    std::string Title;  ///< for those who can't see it
    std::string Id;  ///< of the title on the page
    std::string Class;
};

/// An SVG file as a picture within an HTML page. What says nothing new is left out.
[[nodiscard]] std::string HtmlPicture(std::string_view svg, const PictureFrame& frame);

}  // namespace quillara
