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

std::string ListOfAll(std::span<const std::string> texts) {
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "" : ", ") + Quoted(text);
    }
    return list;
}

std::string QuotedList(const std::vector<std::string>& texts) {
    constexpr std::size_t mostListed = 20;
    const std::size_t listed = std::min(texts.size(), mostListed);
    const std::string more = listed == texts.size() ? "" : " and " + std::to_string(texts.size() - listed) + " more";
    return ListOfAll(std::span(texts).first(listed)) + more;
}

}  // namespace quillara
