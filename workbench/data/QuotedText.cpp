#include "workbench/data/QuotedText.h"

#include <algorithm>

namespace quillara {

std::string Shortened(std::string_view text) {
    constexpr std::size_t longest = 200;
    std::size_t characters = 0;
    const auto end = std::ranges::find_if(text, [&characters](char byte) {
        const bool beginsCharacter = (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
        return beginsCharacter && ++characters > longest;
    });
    return std::string(text.begin(), end) + (end == text.end() ? "" : "...");
}

std::string Quoted(std::string_view text) {
    return "\"" + Shortened(text) + "\"";
}

std::string QuotedList(const std::vector<std::string>& texts) {
    constexpr std::size_t mostListed = 10;
    const std::size_t listed = std::min(texts.size(), mostListed);
    std::string list;
    for (std::size_t i = 0; i < listed; ++i) {
        list += (i == 0 ? "" : ", ") + Quoted(texts[i]);
    }
    return list + (listed == texts.size() ? "" : " and " + std::to_string(texts.size() - listed) + " more");
}

}  // namespace quillara
