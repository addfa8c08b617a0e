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
#include "workbench/formats/FileSignature.h"
#include "workbench/formats/StatisticalFile.h"

namespace quillara {
namespace {

/// What a file holds. A pipe isn't looked at: what is read from it is gone.
FileContent LookInto(const std::string& path, std::string_view extension) {
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::character) {
        return {};
    }
    WorkMonitor monitor;
    return FileContentOf(ReadBytes(path, monitor, signatureLength), extension);
}

bool IsDelimitedText(std::string_view extension) {
    constexpr std::array<std::string_view, 4> extensions = {"csv", "tsv", "tab", "txt"};
    return std::ranges::find(extensions, extension) != extensions.end();
}

[[noreturn]] void RefuseForeign(const std::string& path, const FileContent& content) {
    throw DataError("\"" + path + "\" is " + std::string(content.ForeignKind) + ", which can't be read; " +
                    std::string(content.Advice) + ".");
}

/// The extension of the format in which a file is to be read.
std::string FormatOf(const std::string& path) {
    const std::string extension = ExtensionOf(path);
    const FileContent content = LookInto(path, extension);
    if (!content.ForeignKind.empty()) {
        RefuseForeign(path, content);
    }
    const bool isNamed = IsStatisticalFile(extension) || IsDelimitedText(extension);
    if (!isNamed && !content.Extension.empty()) {
        return std::string(content.Extension);
    }
    // sav and zsav are one format to their reader.
    const bool areTwins = extension.ends_with("sav") && content.Extension.ends_with("sav");
    if (!content.Extension.empty() && content.Extension != extension && !areTwins) {
        const std::string renamed = std::filesystem::path(path).replace_extension(content.Extension).filename();
        throw DataError("\"" + path + "\" isn't what its name says: it holds a " + std::string(content.Extension) +
                        " file; rename it to \"" + renamed + "\".");
    }
    return extension;
}

}  // namespace

DataTable ReadDataFile(const std::string& path, const ReadOptions& options) {
    const std::string format = FormatOf(path);
    return IsStatisticalFile(format) ? ReadStatisticalFile(path, format, options) : ReadDelimitedTable(path, options);
}

void WriteDataFile(const DataTable& table, const std::string& path, const std::function<bool()>& cancelled) {
    if (ExtensionOf(path) != "csv") {
        throw DataError("\"" + path + "\" can't be written: can only write csv so far.");
    }
    ReplaceFile(path, TextOfTable(table, cancelled), cancelled);
}

}  // namespace quillara
