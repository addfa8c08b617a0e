#include "workbench/hosting/TextFields.h"

#include "workbench/hosting/LongTexts.h"

namespace quillara {

std::string TextOfField(std::string_view field) {
    std::string text(field.substr(0, field.find('\0')));
    if (text.size() == field.size()) {
        text = WithoutBrokenTail(std::move(text));
    }
    return Replace8CharGrow(text);
}

}  // namespace quillara
