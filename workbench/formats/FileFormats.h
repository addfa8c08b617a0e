#pragma once

#include <array>
#include <string>
#include <string_view>

namespace quillara {

/// What reads and writes a format.
enum class FormatKind { DelimitedText, PackedText, Statistical, Columns, Workbook, Database };

/// A format of data files, by the extension of its files in small letters.
struct FileFormat {
    std::string_view Extension;
    FormatKind Kind;
    bool IsWritten;
    std::string_view Content;  ///< what files of it are
    std::string_view Keeps;  ///< what is kept when a table is written to it; empty: it isn't written
};

// clang-format off
/// All formats that are read. Help, messages and the README tell them from here.
inline constexpr auto FileFormats = std::to_array<FileFormat>({
    {"csv",      FormatKind::DelimitedText, true,  "delimited text",          "texts, numbers and dates, and labels in place of codes"},
    {"tsv",      FormatKind::DelimitedText, false, "delimited text",          ""},
    {"tab",      FormatKind::DelimitedText, false, "delimited text",          ""},
    {"txt",      FormatKind::DelimitedText, false, "delimited text",          ""},
    {"sav",      FormatKind::Statistical,   true,  "statistical data",        "everything"},
    {"zsav",     FormatKind::Statistical,   true,  "the same, compressed",    "everything, but for the sign of -0"},
    {"por",      FormatKind::Statistical,   false, "the same, portable",      ""},
    {"dta",      FormatKind::Statistical,   true,  "statistical data",        "everything, texts with labels as labelled numbers"},
    {"sas7bdat", FormatKind::Statistical,   false, "statistical data",        ""},
    {"xpt",      FormatKind::Statistical,   false, "the same, for transport", ""},
    {"qtable",   FormatKind::Columns,       true,  "columns of this program", "everything, and is opened at once, whatever its size"},
    {"gz",       FormatKind::PackedText,    false, "delimited text, packed by gzip: csv.gz, tsv.gz", ""},
    {"zst",      FormatKind::PackedText,    false, "delimited text, packed by zstd: csv.zst",        ""},
    {"xlsx",     FormatKind::Workbook,      true,  "a sheet of a workbook",   "texts, numbers, dates and times as cells, and labels in place of codes"},
    {"xlsm",     FormatKind::Workbook,      false, "the same, with macros",   ""},
    {"ods",      FormatKind::Workbook,      false, "a sheet of an OpenDocument spreadsheet", ""},
    {"sqlite",   FormatKind::Database,      false, "a table of an SQLite database",          ""},
    {"sqlite3",  FormatKind::Database,      false, "the same",                ""},
    {"db",       FormatKind::Database,      false, "the same",                ""},
    {"parquet",  FormatKind::Database,      false, "columns, where the library of DuckDB is installed", ""},
});
// clang-format on

/// The format of an extension in small letters; null for none.
[[nodiscard]] const FileFormat* FindFileFormat(std::string_view extension);

/// "csv and other delimited text, sav, zsav, por, dta, sas7bdat, xpt, qtable"
[[nodiscard]] std::string ReadFormats();

/// "csv, sav, zsav, dta, qtable or xlsx"
[[nodiscard]] std::string WrittenFormats();
/// The same with a text of one's own between them.
[[nodiscard]] std::string WrittenFormats(std::string_view between);

/// The table of the README, a row a format.
[[nodiscard]] std::string FormatTable();

}  // namespace quillara
