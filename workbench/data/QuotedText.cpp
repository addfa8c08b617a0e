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
    constexpr std::size_t mostListed = 20;
    const std::size_t listed = std::min(texts.size(), mostListed);
    std::string list;
    for (std::size_t text = 0; text < listed; ++text) {
        list += (text == 0 ? "" : ", ") + Quoted(texts[text]);
    }
    const std::size_t more = texts.size() - listed;
    return more == 0 ? list : list + " and " + std::to_string(more) + " more";
}

}  // namespace quillara
