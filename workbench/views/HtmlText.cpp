#include "workbench/views/HtmlText.h"

namespace quillara {

std::string Escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

std::string Element(const std::string& name, const std::string& attributes, const std::string& contents) {
    return '<' + name + (attributes.empty() ? "" : " ") + attributes + '>' + contents + "</" + name + '>';
}

}  // namespace quillara
