#pragma once

#include <array>
#include <string>
#include <string_view>

namespace quillara {

/// A format of data files, by the extension of its files in small letters.
struct FileFormat {
    std::string_view Extension;
    bool IsDelimitedText;
    bool IsWritten;
    std::string_view Content;  ///< what files of it are
    std::string_view Keeps;  ///< what is kept when a table is written to it; empty: it isn't written
};

// clang-format off
/// All formats that are read. Help, messages and the README tell them from here.
inline constexpr auto FileFormats = std::to_array<FileFormat>({
    {"csv",      true,  true,  "delimited text",         "texts, numbers and dates, and labels in place of codes"},
    {"tsv",      true,  false, "delimited text",         ""},
    {"tab",      true,  false, "delimited text",         ""},
    {"txt",      true,  false, "delimited text",         ""},
    {"sav",      false, true,  "statistical data",       "everything"},
    {"zsav",     false, true,  "the same, compressed",   "everything, but for the sign of -0"},
    {"por",      false, false, "the same, portable",     ""},
    {"dta",      false, true,  "statistical data",       "everything, texts with labels as labelled numbers"},
    {"sas7bdat", false, false, "statistical data",       ""},
    {"xpt",      false, false, "the same, for transport", ""},
});
// clang-format on

/// The format of an extension in small letters; null for none.
[[nodiscard]] const FileFormat* FindFileFormat(std::string_view extension);

/// "csv and other delimited text, sav, zsav, por, dta, sas7bdat, xpt"
[[nodiscard]] std::string ReadFormats();

/// "csv, sav, zsav or dta"
[[nodiscard]] std::string WrittenFormats();

/// The table of the README, a row a format.
[[nodiscard]] std::string FormatTable();

}  // namespace quillara
