#include "workbench/formats/DataFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/DelimitedWriter.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/StatisticalFile.h"

namespace quillara {
namespace {

constexpr std::size_t signatureLength = 32;

/// What the first bytes of a file say about its format; empty when they say nothing.
std::string_view FormatBySignature(std::string_view bytes) {
    struct Signature {
        std::string_view Begin;
        std::string_view Extension;
    };
    constexpr std::array<Signature, 6> signatures = {{
        {"$FL2", "sav"},
        {"$FL3", "zsav"},
        {"<stata_dta>", "dta"},
        {"HEADER RECORD*******LIB", "xpt"},
        {std::string_view("\0\0\0\0\0\0\0\0\0\0\0\0\xc2\xea\x81\x60", 16), "sas7bdat"},
        {"PK\x03\x04", "zip"},
    }};
    const auto found = std::ranges::find_if(
        signatures, [&](const Signature& signature) { return bytes.starts_with(signature.Begin); });
    return found == signatures.end() ? std::string_view() : found->Extension;
}

}  // namespace

DataTable ReadDataFile(const std::string& path, const ReadOptions& options) {
    const std::string extension = ExtensionOf(path);
    // What is read from a pipe is gone, so only a file that stands on the disk is looked at beforehand.
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(path, error).type();
    const bool isPipe = type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::character;
    const std::string_view content = isPipe ? "" : FormatBySignature(ReadBytes(path, signatureLength));
    // sav and zsav are one format to their reader.
    const bool agrees = content.empty() || content == extension || (content == "zsav" && extension == "sav") ||
                        (content == "sav" && extension == "zsav");
    if (!agrees) {
        throw DataError("\"" + path + "\" isn't what its name says: its content is that of a " + std::string(content) +
                        " file.");
    }
    return IsStatisticalFile(extension) ? ReadStatisticalFile(path, extension, options.Encoding)
                                        : ReadDelimitedTable(path, options);
}

void WriteDataFile(const DataTable& table, const std::string& path) {
    if (ExtensionOf(path) != "csv") {
        throw DataError("\"" + path + "\" can't be written: can only write csv so far.");
    }
    ReplaceFile(path, TextOfTable(table));
}

}  // namespace quillara
