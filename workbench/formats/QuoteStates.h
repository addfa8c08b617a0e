#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "workbench/formats/TextSource.h"

namespace quillara {

/// Where a place of delimited text stands with regard to quotes.
enum class QuoteState : unsigned char {
    Outside,
    Inside,
    AtQuote,  ///< behind a quote that ends a quoted field unless another follows
};

/// A stretch of a text.
struct TextRange {
    std::size_t Begin = 0;
    std::size_t End = 0;
};

/// What a stretch of text makes of each state that it may begin in.
class QuoteStates {
  public:
    /// Follows the bytes from 1 on; the one before them says whether a quote right behind it opens a field.
    QuoteStates(std::string_view bytes, std::optional<char> separator);

    [[nodiscard]] QuoteState After(QuoteState before) const { return States[static_cast<std::size_t>(before)]; }

  private:
    std::array<QuoteState, 3> States = {QuoteState::Outside, QuoteState::Inside, QuoteState::AtQuote};
};

/// How much of each part is followed to tell in which state the next one begins.
enum class Following {
    Ends,  ///< only its end: mostly enough, but a guess
    All,
};

/// The state in which each part of a text begins; the first begins outside quotes, and each where the one before ends.
[[nodiscard]] std::vector<QuoteState> StatesOfParts(const TextSource& source, const std::vector<TextRange>& parts,
                                                    std::optional<char> separator, Following following);

/// Where the first record begins that begins in a part with this state; the end of the part or more when none does.
/// Another part must stand before it.
[[nodiscard]] std::size_t FirstRecordIn(const TextSource& source, const TextRange& part, std::optional<char> separator,
                                        QuoteState state);

}  // namespace quillara
