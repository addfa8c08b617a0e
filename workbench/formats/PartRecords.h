#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/QuoteStates.h"
#include "workbench/formats/RecordScanner.h"
#include "workbench/formats/TextSource.h"

namespace quillara {

/// The bytes of a text aren't what they were taken for.
class UnexpectedBytes : public std::runtime_error {
  public:
    enum class Kind {
        Null,  ///< a null byte: it is no text
        NotUtf8,
        NotAtRecord,  ///< a part doesn't begin in the state that it was guessed to begin in
    };

    explicit UnexpectedBytes(Kind what) : std::runtime_error("Unexpected bytes."), What(what) {}

    Kind What;
};

/// The records that begin in one part of a text, read window by window, so that not more than a window of it is in
/// memory. The bytes of whole records are checked for what they are taken for.
class PartRecords {
  public:
    struct Rules {
        std::optional<char> Separator{};
        bool IsUtf8 = true;  ///< else any bytes but null bytes will do
        bool IsGuess = false;  ///< whether the part may not begin where it seems to
    };

    /// The records from `first` on that begin before `end`. `window` is room that is used again for other parts; it and
    /// the source must outlive this.
    PartRecords(const TextSource& source, const TextRange& records, const Rules& rules, std::string& window);

    /// Reads the next record; false behind the last. The fields stay valid until the next call, and RoomBehindDecimal
    /// bytes behind each can be read. Throws UnexpectedBytes.
    bool Next(std::vector<std::string_view>& fields);

    /// The same for many records: Load until there are none, and after each call Append until there are none. All
    /// fields stay valid until Load is called again.
    bool Load();
    /// Puts the fields of the next record behind those that are there.
    bool Append(std::vector<std::string_view>& fields);

    /// Checks the bytes of the records read so far, as is done behind the last. Throws UnexpectedBytes.
    void CheckRead() const;

    /// Where in the text the record that Next gave begins.
    [[nodiscard]] std::size_t Begin() const { return WindowBegin + Scanner->Begin(); }
    /// Where the next one begins.
    [[nodiscard]] std::size_t End() const { return NextBegin; }
    /// Whether that record holds nothing but blanks.
    [[nodiscard]] bool IsEmpty() const { return Scanner->IsEmpty(); }
    /// Whether that record ends inside quotes.
    [[nodiscard]] bool EndsInQuotes() const { return Scanner->EndsInQuotes(); }

  private:
    void LoadFromNext();
    [[nodiscard]] std::string_view Text() const { return std::string_view(Window).substr(0, TextBytes); }

    const TextSource& Source;
    Rules How;
    std::string& Window;  // a piece of the source, and some room behind it
    std::size_t TextBytes = 0;  // of that piece
    std::size_t WindowBegin;
    std::size_t WindowBytes;
    std::size_t NextBegin;
    std::size_t PartEnd;
    std::optional<RecordScanner> Scanner;
};

}  // namespace quillara
