#include "workbench/formats/QuoteStates.h"

#include <algorithm>
#include <string>

#include "workbench/formats/RecordScanner.h"

namespace quillara {
namespace {

constexpr std::size_t BytesOfEnd = 1024;

/// The state behind a quote, by the byte before it.
QuoteState BehindQuote(QuoteState state, char before, std::optional<char> separator) {
    const bool beginsField = before == separator || IsLineBreak(before);
    switch (state) {
        case QuoteState::Inside:
            return QuoteState::AtQuote;
        case QuoteState::AtQuote:
            // A doubled quote stands for itself; what joins a quoted field behind its closing quote isn't quoted.
            return before == Quote || beginsField ? QuoteState::Inside : QuoteState::Outside;
        case QuoteState::Outside:
            break;
    }
    return beginsField ? QuoteState::Inside : QuoteState::Outside;
}

/// The bytes of a range and the one before them: a line break for the first of the text.
std::string WithByteBefore(const TextSource& source, const TextRange& range) {
    const std::size_t length = range.End - range.Begin;
    return range.Begin == 0 ? "\n" + source.Piece(0, length) : source.Piece(range.Begin - 1, length + 1);
}

}  // namespace

QuoteStates::QuoteStates(std::string_view bytes, std::optional<char> separator) {
    for (std::size_t i = bytes.find(Quote, 1); i != std::string_view::npos; i = bytes.find(Quote, i + 1)) {
        for (QuoteState& state : States) {
            state = BehindQuote(state, bytes[i - 1], separator);
        }
    }
    if (bytes.back() != Quote) {
        std::ranges::replace(States, QuoteState::AtQuote, QuoteState::Outside);
    }
}

std::vector<QuoteState> StatesOfParts(const TextSource& source, const std::vector<TextRange>& parts,
                                      std::optional<char> separator, Following following) {
    std::vector<QuoteState> states = {QuoteState::Outside};
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        TextRange range = parts[i];
        if (following == Following::Ends) {
            range.Begin = std::max(range.Begin, range.End - std::min(range.End, BytesOfEnd));
        }
        states.push_back(QuoteStates(WithByteBefore(source, range), separator).After(states.back()));
    }
    return states;
}

std::size_t FirstRecordIn(const TextSource& source, const TextRange& part, std::optional<char> separator,
                          QuoteState state) {
    std::size_t pieceBytes = BytesOfEnd;
    for (std::size_t begin = part.Begin - 1; begin + 1 < part.End; begin += pieceBytes, pieceBytes *= 2) {
        // One byte beyond the piece tells whether its last is half of a line break.
        const std::string bytes = source.Piece(begin, pieceBytes + 2);
        const std::size_t last = std::min(pieceBytes, bytes.size() - 1);
        for (std::size_t i = 0; i <= last; ++i) {
            const bool isPlace = i > 0 || begin + 1 == part.Begin;
            if (isPlace && IsLineBreak(bytes[i]) && state != QuoteState::Inside) {
                const bool isPair = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
                return begin + i + (isPair ? 2 : 1);
            }
            if (i > 0 && bytes[i] == Quote) {
                state = BehindQuote(state, bytes[i - 1], separator);
            }
        }
    }
    return part.End;
}

}  // namespace quillara
