#include "workbench/formats/FileSignature.h"

#include <algorithm>
#include <array>

#include "workbench/formats/ColumnFileLayout.h"

namespace quillara {
namespace {

constexpr std::string_view SaveAsCsv = "save it as csv";
constexpr std::string_view SaveAsXlsx = "save it as xlsx or csv";
constexpr std::string_view Unpack = "unpack it first";

/// Bytes that files of one kind begin with, and others that tell it from kinds that begin alike.
struct Signature {
    std::string_view Begin;
    std::string_view Within;  // beside it the extension will do
    FileContent Content;
};

// clang-format off
constexpr std::string_view Zip = "PK\x03\x04";
constexpr std::string_view OnlyByName("\0", 1);  // no text holds it

constexpr auto Signatures = std::to_array<Signature>({
    {ColumnFileMark,            "",                         {"qtable"}},
    {"$FL2",                    "",                         {"sav"}},
    {"$FL3",                    "",                         {"zsav"}},
    {"<stata_dta>",             "",                         {"dta"}},
    {"HEADER RECORD*******LIB", "",                         {"xpt"}},
    {std::string_view("\0\0\0\0\0\0\0\0\0\0\0\0\xc2\xea\x81\x60", 16), "", {"sas7bdat"}},
    {Zip,                       "opendocument.spreadsheet", {"ods"}},
    {Zip,                       "xl/",                      {"xlsx"}},
    {Zip,                       "[Content_Types].xml",      {"xlsx"}},
    {Zip,                       "xl/vbaProject.bin",        {"xlsm"}},
    {Zip,                       "",                         {"zip", "a zip archive", Unpack}},
    {"\xD0\xCF\x11\xE0",        "",                         {"xls", "an old Excel workbook", SaveAsXlsx}},
    {"\x1F\x8B",                "",                         {"gz"}},
    {"\x28\xB5\x2F\xFD",        "",                         {"zst"}},
    {"BZh",                     "1AY&SY",                   {"bz2", "a bzip2 archive", Unpack}},
    {"\xFD" "7zXZ",             "",                         {"xz", "an xz archive", Unpack}},
    {"7z\xBC\xAF",              "",                         {"7z", "a 7z archive", Unpack}},
    {"PAR1",                    "",                         {"parquet"}},
    {"ARROW1",                  "",                         {"feather", "an Arrow file", SaveAsCsv}},
    {"SQLite format 3",         "",                         {"sqlite"}},
    {"%PDF-",                   "",                         {"pdf", "a PDF document", SaveAsCsv}},
    {"{",                       OnlyByName,                 {"json", "a JSON file", SaveAsCsv}},
    {"[",                       OnlyByName,                 {"json", "a JSON file", SaveAsCsv}},
});
// clang-format on

/// Old dta files begin with their version, the order of bytes, 1 and 0.
bool IsOldDta(std::string_view bytes) {
    return bytes.size() > 4 && 104 <= bytes[0] && bytes[0] <= 115 && (bytes[1] == 1 || bytes[1] == 2) &&
           bytes[2] == 1 && bytes[3] == 0;
}

/// The mark of por files stands behind 456 bytes and the line breaks between them.
bool IsPor(std::string_view bytes) {
    constexpr std::size_t earliest = 456;
    constexpr std::string_view mark = "SPSSPORT";
    const std::size_t place = bytes.find(mark, earliest);
    return place != std::string_view::npos && place <= earliest + 12;
}

}  // namespace

FileContent FileContentOf(std::string_view bytes, std::string_view extension) {
    const auto found = std::ranges::find_if(Signatures, [&](const Signature& signature) {
        return bytes.starts_with(signature.Begin) &&
               (extension == signature.Content.Extension || bytes.find(signature.Within) != std::string_view::npos);
    });
    if (found != Signatures.end()) {
        return found->Content;
    }
    if (IsOldDta(bytes)) {
        return {.Extension = "dta"};
    }
    return IsPor(bytes) ? FileContent{.Extension = "por"} : FileContent{};
}

}  // namespace quillara
