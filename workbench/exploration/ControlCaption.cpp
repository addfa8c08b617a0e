#include "workbench/exploration/ControlCaption.h"

#include <algorithm>
#include <cctype>

namespace quillara {
namespace {

constexpr std::size_t NumberedMark = 4;  // !372

bool IsDigit(char sign) {
    return std::isdigit(static_cast<unsigned char>(sign)) != 0;
}

/// A letter is a mark only when a caption of its own stands behind it: in capitals, an access key, or nothing.
bool BeginsWithLetterMark(std::string_view caption) {
    if (caption.empty() || std::string_view("hje`").find(caption.front()) == std::string_view::npos) {
        return false;
    }
    return caption.size() == 1 || caption[1] == '&' || std::isupper(static_cast<unsigned char>(caption[1])) != 0 ||
           caption.front() == 'h' || caption.front() == '`';
}

}  // namespace

std::string ControlCaption::Plain() const {
    std::string plain;
    for (std::size_t i = 0; i < Text.size(); ++i) {
        if (Text[i] == '&' && i + 1 < Text.size()) {
            ++i;
        }
        plain += Text[i];
    }
    return plain;
}

ControlCaption CaptionOf(std::string_view caption) {
    std::size_t mark = 0;
    if (caption.size() >= NumberedMark && caption.front() == '!' &&
        std::ranges::all_of(caption.substr(1, NumberedMark - 1), IsDigit)) {
        mark = NumberedMark;
    } else if (BeginsWithLetterMark(caption)) {
        mark = 1;
    }
    return {std::string(caption.substr(0, mark)), std::string(caption.substr(mark))};
}

}  // namespace quillara
