#include "workbench/formats/FileFormats.h"

#include <algorithm>
#include <vector>

namespace quillara {
namespace {

std::string Joined(const std::vector<std::string>& texts, std::string_view beforeLast,
                   std::string_view between = ", ") {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        joined += i == 0 ? "" : i + 1 == texts.size() ? beforeLast : between;
        joined += texts[i];
    }
    return joined;
}

std::vector<std::string> WrittenExtensions() {
    std::vector<std::string> formats;
    for (const FileFormat& format : FileFormats) {
        if (format.IsWritten) {
            formats.emplace_back(format.Extension);
        }
    }
    return formats;
}

}  // namespace

const FileFormat* FindFileFormat(std::string_view extension) {
    const auto* found = std::ranges::find(FileFormats, extension, &FileFormat::Extension);
    return found == FileFormats.end() ? nullptr : found;
}

std::string ReadFormats() {
    std::vector<std::string> formats = {"csv and other delimited text"};
    for (const FileFormat& format : FileFormats) {
        if (format.Kind != FormatKind::DelimitedText) {
            formats.emplace_back(format.Extension);
        }
    }
    return Joined(formats, ", ");
}

std::string WrittenFormats() {
    return Joined(WrittenExtensions(), " or ");
}

std::string WrittenFormats(std::string_view between) {
    return Joined(WrittenExtensions(), between, between);
}

std::string FormatTable() {
    std::string table = "| extension | content | when written, keeps |\n|---|---|---|\n";
    for (const FileFormat& format : FileFormats) {
        const std::string_view keeps = format.IsWritten ? format.Keeps : "isn't written";
        table.append("| ").append(format.Extension).append(" | ").append(format.Content).append(" | ");
        table.append(keeps).append(" |\n");
    }
    return table;
}

}  // namespace quillara
