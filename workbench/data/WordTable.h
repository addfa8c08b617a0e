#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"

namespace quillara {

/// The words that an option takes and what they mean.
template <typename Meaning, std::size_t Count>
using WordTable = std::array<std::pair<std::string_view, Meaning>, Count>;

/// The meaning of a word; throws UsageError for one that isn't in the table, listing those that are.
template <typename Meaning, std::size_t Count>
[[nodiscard]] Meaning Choose(const WordTable<Meaning, Count>& words, std::string_view text) {
    std::vector<std::string> known;
    for (const auto& [word, meaning] : words) {
        if (word == text) {
            return meaning;
        }
        known.emplace_back(word);
    }
    throw UsageError("Unknown value " + Quoted(text) + EndWithChoice(text, known));
}

}  // namespace quillara
