#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// One record of delimited text: its fields without quotes, trimmed of spaces and tabs.
struct DelimitedRecord {
    std::vector<std::string> Fields;
    std::size_t Line = 0;  ///< the line of the text on which the record begins, from 1
};

/// How delimited text is cut into records.
struct RecordOptions {
    std::optional<char> Separator{};  ///< nothing: found from the text
    std::string_view Separators = ",;\t|";  ///< the characters among which it is found
    std::string Encoding{};  ///< empty: UTF-8, else Windows-1252
    std::optional<std::size_t> MaxMemory{};  ///< ReadDelimitedRecords only, as in ReadOptions
    std::string_view SeparatorOption{};  ///< what sets another separator, for error messages; empty: nothing does
};

/// The fields of one record, without quotes, trimmed of spaces and tabs; an empty text is one empty field. A quote
/// opens a field also behind blanks, unlike in a file: `age, "a,b"` are two fields. A line break is a character.
/// Throws DataError when a quote is never closed.
[[nodiscard]] std::vector<std::string> SplitRecord(std::string_view text, char separator = ',');

/// All records of a file of delimited text, the first one included, which mostly holds names. Empty records are
/// passed over; when the first record has a single field, an empty one behind it counts as an empty field.
/// Throws DataError, naming the file and the line, when a record hasn't as many fields as the first or a quote is
/// never closed; also when the file can't be read or is no text.
[[nodiscard]] std::vector<DelimitedRecord> ReadDelimitedRecords(const std::string& path,
                                                                const RecordOptions& options = {});

/// A field as it stands in delimited text: in quotes when a reader could take it for more than one.
[[nodiscard]] std::string QuotedField(const std::string& text);

}  // namespace quillara
