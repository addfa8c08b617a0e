#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// The candidate that a mistyped text probably means: one that differs in the case of letters only, else the nearest
/// by letters left out, put in, exchanged or swapped with their neighbour, at most one in three; else the one that
/// begins with the text. Nothing when none is near.
[[nodiscard]] std::optional<std::string> Suggestion(std::string_view text, const std::vector<std::string>& candidates);

/// The candidates that it may mean, the nearest first: as many as there are near, at most so many.
[[nodiscard]] std::vector<std::string> Suggestions(std::string_view text, std::span<const std::string> candidates,
                                                   std::size_t most);

/// The end of a sentence about a text that none of the candidates is: `; did you mean "age"?`, or a full stop.
[[nodiscard]] std::string EndWithSuggestion(std::string_view text, const std::vector<std::string>& candidates);

/// The same with all candidates listed behind: `; did you mean "html"? Choose from text, html.`
[[nodiscard]] std::string EndWithChoice(std::string_view text, const std::vector<std::string>& candidates);

}  // namespace quillara
