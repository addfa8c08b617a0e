#include "workbench/formats/RecordReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileBytes.h"

namespace quillara {
namespace {

// How much of reading a table is done when its bytes are there, when they are text, and when they are records.
constexpr double ShareOfBytes = 0.1;
constexpr double ShareOfText = 0.2;
constexpr double ShareOfRecords = 0.5;

/// Refuses what is no text; `bytes` may be the beginning only.
void CheckIsText(const std::string& path, std::string_view text, std::string_view bytes) {
    if (text.find('\0') != std::string_view::npos) {
        const bool looksWide = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
        throw DataError("\"" + path + "\" is no delimited text" +
                        (looksWide ? " in UTF-8 or Windows-1252; try the encoding utf-16." : "."));
    }
}

std::string BytesOf(const std::string& path, const std::string& encoding, WorkMonitor& monitor) {
    std::error_code unknownSize;
    const std::uintmax_t size = std::filesystem::file_size(path, unknownSize);
    monitor.Enter(0, ShareOfBytes, unknownSize ? 0 : size);
    return ReadBytes(path, monitor, [&](std::string_view beginning) {
        // Other encodings may have null bytes within characters.
        if (encoding.empty()) {
            CheckIsText(path, beginning, beginning);
        }
    });
}

std::string TextOf(const std::string& path, std::string bytes, const std::string& encoding, WorkMonitor& monitor) {
    const std::string beginning = bytes.substr(0, 2);
    std::string text;
    try {
        monitor.Enter(ShareOfBytes, ShareOfText, bytes.size());
        text = DecodeText(std::move(bytes), encoding, monitor);
    } catch (const DataError& error) {
        throw DataError("\"" + path + "\" can't be read: " + error.what());
    }
    CheckIsText(path, text, beginning);
    return text;
}

std::optional<char> ChooseSeparator(std::string_view text, const RecordOptions& options) {
    const std::optional<char> asked = options.Separator;
    if (!asked) {
        return FindSeparator(text, options.Separators);
    }
    if (*asked == '"' || *asked == '\n' || *asked == '\r') {
        throw UsageError("A quote or a line break can't separate fields.");
    }
    return asked;
}

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

}  // namespace

RecordReader::RecordReader(const std::string& path, const RecordOptions& options, WorkMonitor& monitor)
    : RecordReader(path, BytesOf(path, options.Encoding, monitor), options, monitor) {}

RecordReader::RecordReader(const std::string& path, std::string bytes, const RecordOptions& options,
                           WorkMonitor& monitor)
    : Path(path),
      Options(options),
      Monitor(monitor),
      Text(TextOf(path, std::move(bytes), options.Encoding, monitor)),
      HasKeyMarks(Text.find(KeyMark) != std::string::npos),
      Scanner(Text, {.Separator = ChooseSeparator(Text, options)}) {
    Monitor.Enter(ShareOfText, ShareOfRecords, Text.size());
}

bool RecordReader::Next(std::vector<std::string_view>& fields) {
    while (Scanner.Next(fields)) {
        Monitor.Advance(Scanner.BytesRead() - std::exchange(BytesCounted, Scanner.BytesRead()));
        if (Scanner.IsEmpty() && FieldsPerRecord != 1) {
            LeadingEmpty += FieldsPerRecord ? 0 : 1;
            continue;
        }
        if (Scanner.EndsInQuotes()) {
            Fail(Line(), "a quote is opened and never closed");
        }
        if (!FieldsPerRecord) {
            FieldsPerRecord = fields.size();
        }
        if (fields.size() != *FieldsPerRecord) {
            FailForCount(fields.size());
        }
        ReplaceKeyMarks(fields);
        return true;
    }
    return false;
}

void RecordReader::FailForCount(std::size_t fields) const {
    const std::string expected = std::to_string(*FieldsPerRecord);
    std::string advice = "separator: " + NameOfSeparator(Scanner.Separator());
    if (!Options.SeparatorOption.empty()) {
        advice.append("; ").append(Options.SeparatorOption).append(" sets another");
    }
    Fail(Line(), CountOfFields(fields) + " instead of " + expected + "; the first record has " + expected + " (" +
                     advice + ")");
}

// Field by field, because the mark of keys may also be the separator.
void RecordReader::ReplaceKeyMarks(std::vector<std::string_view>& fields) {
    for (std::string_view& field : fields) {
        if (HasKeyMarks && field.find(KeyMark) != std::string_view::npos) {
            field = Replaced.emplace_back(WithoutKeyMarks(field));
        }
    }
}

void RecordReader::Fail(std::size_t line, const std::string& problem) const {
    throw DataError("\"" + Path + "\", line " + std::to_string(line) + ": " + problem + ".");
}

}  // namespace quillara
