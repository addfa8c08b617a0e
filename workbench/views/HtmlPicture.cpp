#include "workbench/views/HtmlPicture.h"

#include <algorithm>
#include <array>

#include "workbench/views/HtmlText.h"

namespace quillara {
namespace {

/// Attributes with the values that they have anyway, by default or from the picture as a whole.
constexpr std::array<std::string_view, 9> VoidAttributes = {
    " transform=\"matrix(1,0,0,1,0,0)\"",
    " fill-opacity=\"1\"",
    " stroke-opacity=\"1\"",
    " stroke-width=\"1\"",
    " stroke-linecap=\"square\"",
    " stroke-linejoin=\"bevel\"",
    " vector-effect=\"none\"",
    " font-weight=\"400\"",
    " font-style=\"normal\"",
};

constexpr std::string_view GroupFront = "<g ";
constexpr std::string_view GroupEnd = "</g>";
constexpr std::string_view Blanks = " \n";

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
}

/// A copy; cutting a long text shorter in place would move its rest for each part.
std::string Without(std::string_view part, std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part)) {
        result += text.substr(0, at);
        text.remove_prefix(at + part.size());
    }
    return result += text;
}

std::string WithoutVoidAttributes(std::string_view svg) {
    std::string text(svg);
    for (const std::string_view attribute : VoidAttributes) {
        text = Without(attribute, text);
    }
    return text;
}

/// Takes the front group's tag, without the font on its second line, as each text names its own; nothing for a group
/// that holds nothing, which goes whole.
std::string TakeGroupTag(std::string_view& text) {
    const std::string_view tag = text.substr(0, text.find('>'));
    text.remove_prefix(std::min(tag.size() + 1, text.size()));
    SkipBlanks(text);
    if (text.starts_with(GroupEnd)) {
        text.remove_prefix(GroupEnd.size());
        SkipBlanks(text);
        return {};
    }
    return std::string(tag.substr(0, tag.find('\n'))) + '>';
}

/// The painting itself: the groups, without those that hold nothing.
std::string Shortened(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        if (text.starts_with(GroupFront)) {
            result += TakeGroupTag(text);
        }
        const std::size_t next = text.starts_with(GroupFront) ? 0 : std::min(text.find(GroupFront), text.size());
        result += text.substr(0, next);
        text.remove_prefix(next);
    }
    return result;
}

/// The value of an attribute of the front tag.
std::string AttributeOf(std::string_view svg, std::string_view name) {
    const std::size_t front = svg.find(std::string(name) + "=\"") + name.size() + 2;
    return std::string(svg.substr(front, svg.find('"', front) - front));
}

}  // namespace

std::string HtmlPicture(std::string_view svg, const PictureFrame& frame) {
    svg.remove_prefix(std::min(svg.find("<svg"), svg.size()));
    const std::string box = AttributeOf(svg, "viewBox");
    svg.remove_prefix(std::min(svg.find(GroupFront), svg.size()));
    const std::string painting = WithoutVoidAttributes(svg.substr(0, svg.rfind("</svg>")));
    const std::string attributes = "class=\"" + frame.Class + "\" role=\"img\" aria-labelledby=\"" + frame.Id +
                                   "\" viewBox=\"" + box + "\" stroke-linecap=\"square\" stroke-linejoin=\"bevel\"";
    return Element("svg", attributes,
                   Element("title", "id=\"" + frame.Id + '"', frame.Title) + '\n' + Shortened(painting)) +
           '\n';
}

}  // namespace quillara
