#include "workbench/formats/TextOfFile.h"

#include <cstdint>
#include <filesystem>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/PackedText.h"

namespace quillara {
namespace {

constexpr double ShareOfBytes = 0.1;  // of reading a table

void RequireNoNullIn(const std::string& path, std::string_view text, std::string_view beginning) {
    if (text.find('\0') != std::string_view::npos) {
        RefuseNull(path, beginning);
    }
}

}  // namespace

void CheckIsText(const std::string& path, std::string_view beginning) {
    RequireNoNullIn(path, beginning, beginning);
}

void RefuseNull(const std::string& path, std::string_view beginning) {
    const bool looksWide = beginning.starts_with("\xFF\xFE") || beginning.starts_with("\xFE\xFF");
    throw DataError("\"" + path + "\" is no delimited text" +
                    (looksWide ? " in UTF-8 or Windows-1252; try the encoding utf-16." : "."));
}

std::string EncodingOfFile(const std::string& path, const std::string& asked, WorkMonitor& monitor) {
    std::error_code error;
    if (!asked.empty() || !std::filesystem::is_regular_file(path, error)) {
        return asked;
    }
    const std::string mark = ReadBytes(path, monitor, 2);
    return mark == "\xFF\xFE" || mark == "\xFE\xFF" ? "utf-16" : "";
}

bool IsPackedFile(const std::string& path, WorkMonitor& monitor) {
    constexpr std::size_t longestMark = 4;
    return IsPacked(ReadBytes(path, monitor, longestMark));
}

std::string BytesOfText(const std::string& path, const std::string& encoding, WorkMonitor& monitor) {
    std::error_code unknownSize;
    const std::uintmax_t size = std::filesystem::file_size(path, unknownSize);
    monitor.Enter(0, ShareOfBytes, unknownSize ? 0 : size);
    std::string bytes = ReadBytes(path, monitor, [&](std::string_view beginning) {
        // Other encodings may have null bytes within characters.
        if (encoding.empty() && !IsPacked(beginning)) {
            CheckIsText(path, beginning);
        }
    });
    return IsPacked(bytes) ? UnpackedText(path, bytes, encoding, monitor) : bytes;
}

std::string DecodedText(const std::string& path, std::string bytes, const std::string& encoding, WorkMonitor& monitor) {
    const std::string beginning = bytes.substr(0, 2);
    std::string text;
    try {
        monitor.Enter(ShareOfBytes, ShareOfText, bytes.size());
        text = DecodeText(std::move(bytes), encoding, monitor);
    } catch (const DataError& error) {
        throw DataError("\"" + path + "\" can't be read: " + error.what());
    }
    RequireNoNullIn(path, text, beginning);
    return text;
}

std::string TextOfFile(const std::string& path, const std::string& encoding, WorkMonitor& monitor) {
    return DecodedText(path, BytesOfText(path, encoding, monitor), encoding, monitor);
}

}  // namespace quillara
