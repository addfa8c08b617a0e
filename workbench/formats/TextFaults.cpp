#include "workbench/formats/TextFaults.h"

#include <algorithm>
#include <array>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/TextOfFile.h"
#include "workbench/formats/TitleRecords.h"

namespace quillara {
namespace {

constexpr std::size_t BytesOfPiece = 1 << 20;

std::string NameOfSeparator(std::optional<char> separator) {
    constexpr std::array<std::pair<char, std::string_view>, 4> names = {
        {{',', "comma"}, {';', "semicolon"}, {'\t', "tab"}, {'|', "bar"}}};
    if (!separator) {
        return "none found";
    }
    const auto* found = std::ranges::find(names, *separator, &std::pair<char, std::string_view>::first);
    return found == names.end() ? std::string(1, *separator) : std::string(found->second);
}

std::string CountOfFields(std::size_t fields) {
    return std::to_string(fields) + (fields == 1 ? " field" : " fields");
}

/// What else than another separator may help.
std::string OtherAdvice(const FieldCounts& counts, std::optional<char> separator) {
    if (counts.AboveNames > 0) {
        return "; if the names stand below titles, --skip " + std::to_string(counts.AboveNames) +
               " passes over what is above them";
    }
    if (counts.Fields < counts.Expected) {
        return "; a text with a line break in it has to stand in quotes";
    }
    return separator ? "; a text with a " + NameOfSeparator(separator) + " in it has to stand in quotes" : "";
}

}  // namespace

std::string WrongCount(const FieldCounts& counts, std::optional<char> separator, const RecordOptions& options) {
    const std::string expected = std::to_string(counts.Expected);
    std::string advice = "separator: " + NameOfSeparator(separator);
    if (!options.SeparatorOption.empty()) {
        advice.append("; ").append(options.SeparatorOption).append(" sets another");
    }
    advice += OtherAdvice(counts, separator);
    return CountOfFields(counts.Fields) + " instead of " + expected + "; the first record has " + expected + " (" +
           advice + ")";
}

void FailAtLine(const std::string& path, std::size_t line, const std::string& problem) {
    throw DataError("\"" + path + "\", line " + std::to_string(line) + ": " + problem + ".");
}

bool CanSeparate(char character) {
    return character != '"' && character != '\n' && character != '\r';
}

void RefuseSeparator() {
    throw UsageError("A quote or a line break can't separate fields.");
}

void TextFaults::RequireNoNull() const {
    const std::size_t pieces = Source.Size() / BytesOfPiece + 1;
    Crew.Do(pieces, 0, [&](std::size_t piece, std::size_t /*worker*/) {
        if (Source.Piece(piece * BytesOfPiece, BytesOfPiece).find('\0') != std::string::npos) {
            FailForNull();
        }
    });
}

void TextFaults::FailForNull() const {
    RefuseNull(Path, Source.Piece(0, 2));
}

void TextFaults::Fail(const RecordFault& fault, const TextLayout& layout) const {
    RequireNoNull();
    const std::string problem = fault.Fields ? WrongCount({.Fields = *fault.Fields,
                                                           .Expected = layout.FirstFields.size(),
                                                           .AboveNames = RecordsAboveNames(Source, layout)},
                                                          layout.Separator, Options)
                                             : std::string(OpenQuote);
    FailAtLine(Path, LineOf(fault.Place), problem);
}

void TextFaults::FailForTooLarge(const ColumnGatherer::TooLarge& number, std::size_t variable,
                                 const TextLayout& layout) const {
    const std::size_t line = LineOf(number.Place) + LineBreaksBefore(number, variable, layout);
    FailAtLine(Path, line, "a number is too large: " + number.Field);
}

/// The line of a record that begins at `place`, from 1.
std::size_t TextFaults::LineOf(std::size_t place) const {
    std::size_t line = 1;
    char last = '\0';
    for (std::size_t at = 0; at < place; at += BytesOfPiece) {
        const std::string piece = Source.Piece(at, std::min(BytesOfPiece, place - at));
        // A line break cut in two counts once.
        line += CountLineBreaks(piece) - (last == '\r' && piece[0] == '\n' ? 1 : 0);
        last = piece.back();
    }
    return line;
}

/// Line breaks within the fields before that of a number, in its record.
std::size_t TextFaults::LineBreaksBefore(const ColumnGatherer::TooLarge& number, std::size_t variable,
                                         const TextLayout& layout) const {
    std::string window;
    PartRecords records(Source, {number.Place, number.Place + 1}, {.Separator = layout.Separator, .IsUtf8 = false},
                        window);
    std::vector<std::string_view> fields;
    std::size_t breaks = 0;
    if (records.Next(fields)) {
        for (std::size_t i = 0; i < variable; ++i) {
            breaks += CountLineBreaks(fields[i]);
        }
    }
    return breaks;
}

}  // namespace quillara
