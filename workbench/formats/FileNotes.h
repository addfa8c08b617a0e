#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quillara {

/// A fact about a table that a statistical file has no room for in its own fields and keeps in its notes (the
/// documents of sav and zsav, the notes of dta).
struct FileNote {
    std::string Kind;  ///< a word of NoteKinds.h
    std::string Variable;  ///< the variable's name in the file; empty: the fact is about the file
    std::string Value;  ///< the value of the variable that it is about; empty: none
    std::string Text;
};

/// The notes as lines of at most `lineBytes` bytes, which must be 40 or more. A note is
///
///   quillara: KIND [VARIABLE [VALUE]] = TEXT;
///
/// A line that ends with + instead of ; goes on in the next. Control characters and % stand as % and two hexadecimal
/// digits, and so do blanks and = before the sign of equality. No UTF-8 character is cut in two.
[[nodiscard]] std::vector<std::string> LinesOfNotes(const std::vector<FileNote>& notes, std::size_t lineBytes);

/// The notes among the lines of a file. What isn't of this form, and a note without its end, is passed over.
[[nodiscard]] std::vector<FileNote> NotesOfLines(const std::vector<std::string>& lines);

}  // namespace quillara
