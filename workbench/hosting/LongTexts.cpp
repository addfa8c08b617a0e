#include "workbench/hosting/LongTexts.h"

#include "workbench/hosting/LongTextRegister.h"

namespace quillara {

namespace {

/// Lives to the end of the program: documents made last still expand their texts.
LongTextRegister& TheLongTexts() {
    static LongTextRegister& theRegister = *new LongTextRegister;
    return theRegister;
}

std::size_t LengthOfCharacter(unsigned char first) {
    if (first < 0xC0) {
        return 1;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

std::string LongTextKey(std::string_view text) {
    return TheLongTexts().KeyOf(text);
}

std::string LongTextOf(std::string_view key) {
    const std::string* text = TheLongTexts().Find(key);
    return text == nullptr ? std::string(key) : *text;
}

std::string Replace8CharGrow(std::string_view text) {
    return TheLongTexts().Expand(text);
}

std::string WithoutBrokenTail(std::string text) {
    const std::size_t mark = text.rfind(LongTextKeyMark);
    if (mark != std::string::npos && text.size() - mark < LongTextKeyWidth) {
        text.erase(mark);
    }
    std::size_t last = text.size();
    while (last > 0 && text.size() - last < 3 && IsContinuation(text[last - 1])) {
        --last;
    }
    if (last > 0 && last - 1 + LengthOfCharacter(static_cast<unsigned char>(text[last - 1])) > text.size()) {
        text.erase(last - 1);
    }
    return text;
}

}  // namespace quillara
