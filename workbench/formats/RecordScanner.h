#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/KeptTexts.h"
#include "workbench/formats/RecordEnds.h"

namespace quillara {

inline constexpr char Quote = '"';

/// Whether a character is LF or CR.
[[nodiscard]] inline bool IsLineBreak(char character) {
    return character == '\n' || character == '\r';
}

/// What distinguishes one kind of delimited text from another.
struct RecordRules {
    std::optional<char> Separator{};  ///< nothing: each record is one field
    bool LineBreaksEndRecords = true;  ///< else the whole text is one record
    bool BlanksBeforeQuotes = false;  ///< whether a quote behind blanks opens a field
};

/// Cuts delimited text into records: they end at LF, CR LF or CR outside quotes; text behind a closing quote joins the
/// field; a quote inside an unquoted field is itself. One pass, one call a record.
class RecordScanner {
  public:
    /// The text must outlive the scanner.
    RecordScanner(std::string_view text, RecordRules rules);

    /// Reads the next record; false at the end of the text. The fields, trimmed of spaces and tabs, stay valid as long
    /// as the scanner and the text. A quote that is never closed ends with the text.
    bool Next(std::vector<std::string_view>& fields) {
        fields.clear();
        return Append(fields);
    }
    /// The same, with the fields put behind those that are there.
    bool Append(std::vector<std::string_view>& fields);

    [[nodiscard]] std::optional<char> Separator() const { return Rules.Separator; }
    /// How many bytes of the text are read.
    [[nodiscard]] std::size_t BytesRead() const { return Place; }
    /// Where in the text the record that Next gave begins.
    [[nodiscard]] std::size_t Begin() const { return RecordBegin; }
    /// The line on which it begins, from 1.
    [[nodiscard]] std::size_t Line();
    /// Whether that record holds nothing but blanks.
    [[nodiscard]] bool IsEmpty() const { return RecordIsEmpty; }
    /// Whether that record ends inside quotes.
    [[nodiscard]] bool EndsInQuotes() const { return QuoteIsOpen; }

  private:
    std::string_view ReadField();
    std::string_view ReadUnquoted();
    std::string_view ReadQuoted();
    /// The text up to the closing quote or the end of the text.
    std::string_view ReadToQuote();
    void PassLineBreak();

    std::string_view Text;
    RecordRules Rules;
    RecordEnds Ends;
    std::size_t Place = 0;
    std::size_t RecordBegin = 0;
    std::size_t LineCounted = 1;  // of the record that began at LineCountedAt
    std::size_t LineCountedAt = 0;
    bool RecordIsEmpty = false;
    bool QuoteIsOpen = false;
    std::string Joined;  // a field that stands nowhere in the text as one piece
    KeptTexts Kept;  // such fields
};

/// A text without the spaces and tabs around it.
[[nodiscard]] std::string_view WithoutBlanks(std::string_view text);

/// The line breaks in a text: LF, CR LF or CR.
[[nodiscard]] std::size_t CountLineBreaks(std::string_view text);

struct FoundSeparator {
    std::optional<char> Separator{};
    bool IsCertain = false;  ///< whether what follows the text could change nothing
};

/// The separator of a text: of the candidates the one that gives the same number of fields, above one, in the most of
/// the first 1,000 records that aren't empty, if these are more than half; of equals the first. Nothing when none does.
[[nodiscard]] FoundSeparator FindSeparator(std::string_view text, std::string_view candidates = ",;\t|");

}  // namespace quillara
