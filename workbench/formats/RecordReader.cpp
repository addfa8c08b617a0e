#include "workbench/formats/RecordReader.h"

#include "workbench/data/Errors.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileBytes.h"

namespace quillara {
namespace {

std::string ReadText(const std::string& path, const std::string& encoding) {
    std::string bytes = ReadBytes(path);
    const bool looksWide = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    std::string text;
    try {
        text = DecodeText(std::move(bytes), encoding);
    } catch (const DataError& error) {
        throw DataError("\"" + path + "\" can't be read: " + error.what());
    }
    if (text.find('\0') != std::string::npos) {
        throw DataError("\"" + path + "\" is no delimited text" +
                        (looksWide ? " in UTF-8 or Windows-1252; try the encoding utf-16." : "."));
    }
    return text;
}

std::optional<char> ChooseSeparator(std::string_view text, std::optional<char> asked, std::string_view candidates) {
    if (!asked) {
        return FindSeparator(text, candidates);
    }
    if (*asked == '"' || *asked == '\n' || *asked == '\r') {
        throw UsageError("A quote or a line break can't separate fields.");
    }
    return asked;
}

std::string CountOfFields(std::size_t fields) {
    return std::to_string(fields) + (fields == 1 ? " field" : " fields");
}

}  // namespace

RecordReader::RecordReader(const std::string& path, const RecordOptions& options, std::string_view candidates)
    : Path(path),
      Text(ReadText(path, options.Encoding)),
      Scanner(Text, {.Separator = ChooseSeparator(Text, options.Separator, candidates)}) {}

bool RecordReader::Next(std::vector<std::string_view>& fields) {
    while (Scanner.Next(fields)) {
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
            Fail(Line(), CountOfFields(fields.size()) + " instead of " + std::to_string(*FieldsPerRecord));
        }
        return true;
    }
    return false;
}

void RecordReader::Fail(std::size_t line, const std::string& problem) const {
    throw DataError("\"" + Path + "\", line " + std::to_string(line) + ": " + problem + ".");
}

}  // namespace quillara
