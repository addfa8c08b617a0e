#include "workbench/command/QuotedText.h"

#include <algorithm>

namespace quillara {

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
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
