#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// A text as members take it whose text is a token, so that it stays a text: in double quotes unless it is a bare text.
[[nodiscard]] std::string AsToken(const std::string& text);

/// The name of the variable in a row of a list as a member takes it that looks for the first name which begins so;
/// nothing when it would find another one.
[[nodiscard]] std::optional<std::string> VariableToken(const std::vector<std::string>& rows, std::size_t row,
                                                       const std::string& name);

/// What is known of the category that a step keeps.
struct ChosenCategory {
    std::optional<int> Row;  ///< of the category list; nothing: a script has chosen
    std::string Name;  ///< in that list; empty: not known
    bool IsMissing = false;
    std::string Read;  ///< what its member reads
    std::string Selections;  ///< all categories as the member reads that tells them
};

/// The number that means the category: its row, or what a script has chosen it by where categories go by number; else
/// the place of its name. Nothing when that isn't known.
[[nodiscard]] std::optional<int> PlaceOf(const ChosenCategory& chosen, bool goesByNumber);

/// Its name as the member takes it; nothing when that would be another category, or no name.
[[nodiscard]] std::optional<std::string> CategoryToken(const ChosenCategory& chosen);

}  // namespace quillara
