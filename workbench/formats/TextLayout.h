#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/formats/PartRecords.h"
#include "workbench/formats/QuoteStates.h"
#include "workbench/formats/TextSource.h"

namespace quillara {

/// What is wrong with a record.
struct RecordFault {
    std::size_t Place = 0;  ///< where the record begins
    std::optional<std::size_t> Fields{};  ///< how many it has, too many or too few; nothing: a quote isn't closed
};

/// A delimited text cut into parts that can be read side by side.
struct TextLayout {
    std::size_t Begin = 0;  ///< of what is read, behind a byte-order mark and titles
    std::size_t Titles = 0;  ///< records above Begin, passed over
    bool IsUtf8 = true;
    std::optional<char> Separator{};
    bool SeparatorIsFound = false;  ///< from the text, so that it may be another one
    std::vector<std::string>
        FirstFields{};  ///< of the first record that isn't empty, as they stand; none: there is no record
    std::optional<RecordFault> FirstFault{};
    std::size_t BeginOfFirst = 0;
    std::size_t BehindFirst = 0;  ///< where the record behind that begins
    std::size_t RecordsToFirst = 0;  ///< from Begin on, with it and empty ones above it
    std::vector<TextRange> Parts{};  ///< of all records that hold cases
    std::vector<QuoteState> States{};  ///< in which the parts begin
    bool StatesAreGuessed = true;

    [[nodiscard]] PartRecords::Rules RulesOfPart(std::size_t part) const {
        return {.Separator = Separator, .IsUtf8 = IsUtf8, .IsGuess = StatesAreGuessed && part > 0};
    }
    /// The records that begin in a part; none when Begin isn't below End.
    [[nodiscard]] TextRange RecordsOf(const TextSource& source, std::size_t part) const;
};

/// The separator of a text: of the candidates, the one that FindSeparator finds.
[[nodiscard]] std::optional<char> SeparatorOf(const TextSource& source, std::size_t begin, std::string_view candidates);

/// Reads the first record, as `layout` says, and puts what it holds into it. Throws UnexpectedBytes.
void ReadFirstRecord(const TextSource& source, TextLayout& layout);

/// How many bytes a part of a text should have that is read from `begin` on by so many workers.
[[nodiscard]] std::size_t BytesOfPart(const TextSource& source, std::size_t begin, std::optional<char> separator,
                                      std::size_t workers);

/// Cuts the text from `begin` on into parts of so many bytes.
void CutIntoParts(const TextSource& source, std::size_t begin, std::size_t bytesOfPart, TextLayout& layout);

}  // namespace quillara
