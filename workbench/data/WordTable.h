#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {

/// The words that an option takes and what they mean.
template <typename Meaning, std::size_t Count>
using WordTable = std::array<std::pair<std::string_view, Meaning>, Count>;

/// The meaning of a word; throws UsageError for one that isn't in the table, listing those that are.
template <typename Meaning, std::size_t Count>
[[nodiscard]] Meaning Choose(const WordTable<Meaning, Count>& words, std::string_view text) {
    std::string known;
    for (const auto& [word, meaning] : words) {
        if (word == text) {
            return meaning;
        }
        known += (known.empty() ? "" : ", ") + std::string(word);
    }
    throw UsageError("Unknown value " + Quoted(text) + "; choose from " + known + ".");
}

}  // namespace quillara
