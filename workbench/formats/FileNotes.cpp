#include "workbench/formats/FileNotes.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace quillara {
namespace {

constexpr std::string_view Mark = "quillara: ";
constexpr char LastLine = ';';
constexpr char LineGoesOn = '+';

bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

std::string Escaped(std::string_view text, std::string_view others) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : text) {
        if (!IsControl(character) && character != '%' && others.find(character) == std::string_view::npos) {
            escaped += character;
            continue;
        }
        const auto code = static_cast<unsigned char>(character);
        escaped += {'%', digits[code / 16], digits[code % 16]};
    }
    return escaped;
}

std::string Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char code = 0;
        const bool isEscape = text[i] == '%' && i + 2 < text.size() &&
                              std::from_chars(&text[i + 1], &text[i + 1] + 2, code, 16).ptr == &text[i + 1] + 2;
        plain += isEscape ? static_cast<char>(code) : text[i];
        i += isEscape ? 2 : 0;
    }
    return plain;
}

std::string ContentOf(const FileNote& note) {
    std::string content = note.Kind;
    for (const std::string* word : {&note.Variable, &note.Value}) {
        content += word->empty() ? "" : " " + Escaped(*word, " =");
    }
    return content + " = " + Escaped(note.Text, "");
}

/// How many of the first `room` bytes may stand on a line, so that no character is cut in two.
std::size_t LengthOfPiece(std::string_view text, std::size_t room) {
    std::size_t length = std::min(room, text.size());
    while (length < text.size() && length > 1 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        --length;
    }
    return length;
}

std::optional<FileNote> NoteOf(std::string_view content) {
    constexpr std::string_view equality = " = ";
    const std::size_t end = content.find(equality);
    if (end == std::string_view::npos) {
        return {};
    }
    FileNote note;
    note.Text = Unescaped(content.substr(end + equality.size()));
    std::string_view words = content.substr(0, end);
    for (std::string* word : {&note.Kind, &note.Variable, &note.Value}) {
        const std::size_t length = std::min(words.find(' '), words.size());
        *word = Unescaped(words.substr(0, length));
        words.remove_prefix(std::min(length + 1, words.size()));
    }
    return note;
}

}  // namespace

std::vector<std::string> LinesOfNotes(const std::vector<FileNote>& notes, std::size_t lineBytes) {
    const std::size_t room = lineBytes - Mark.size() - 1;
    std::vector<std::string> lines;
    for (const FileNote& note : notes) {
        const std::string content = ContentOf(note);
        std::string_view rest = content;
        while (!rest.empty()) {
            const std::size_t length = LengthOfPiece(rest, room);
            const char end = length == rest.size() ? LastLine : LineGoesOn;
            lines.push_back(std::string(Mark).append(rest.substr(0, length)) + end);
            rest.remove_prefix(length);
        }
    }
    return lines;
}

std::vector<FileNote> NotesOfLines(const std::vector<std::string>& lines) {
    std::vector<FileNote> notes;
    std::string content;
    for (const std::string& line : lines) {
        if (!line.starts_with(Mark) || (line.back() != LastLine && line.back() != LineGoesOn)) {
            content.clear();
            continue;
        }
        content.append(line, Mark.size(), line.size() - Mark.size() - 1);
        if (line.back() == LineGoesOn) {
            continue;
        }
        if (std::optional<FileNote> note = NoteOf(content)) {
            notes.push_back(std::move(*note));
        }
        content.clear();
    }
    return notes;
}

}  // namespace quillara
