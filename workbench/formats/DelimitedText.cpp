#include "workbench/formats/DelimitedText.h"

#include "workbench/data/Errors.h"
#include "workbench/formats/RecordReader.h"
#include "workbench/formats/RecordScanner.h"

namespace quillara {

std::vector<std::string> SplitRecord(std::string_view text, char separator) {
    RecordScanner scanner(text, {.Separator = separator, .LineBreaksEndRecords = false, .BlanksBeforeQuotes = true});
    std::vector<std::string_view> fields;
    if (!scanner.Next(fields)) {
        return {""};
    }
    if (scanner.EndsInQuotes()) {
        throw DataError("A quote is opened and never closed: " + std::string(text));
    }
    return {fields.begin(), fields.end()};
}

std::vector<DelimitedRecord> ReadDelimitedRecords(const std::string& path, const RecordOptions& options) {
    WorkMonitor monitor({}, {}, MemoryLimit(options.MaxMemory));
    RecordReader reader(path, options, monitor);
    std::vector<std::string_view> fields;
    std::vector<DelimitedRecord> records;
    while (reader.Next(fields)) {
        records.push_back({{fields.begin(), fields.end()}, reader.Line()});
    }
    return records;
}

std::string QuotedField(const std::string& text) {
    if (text.find_first_of("\",;\t|\r\n") == std::string::npos) {
        return text;
    }
    std::string field = "\"";
    for (const char character : text) {
        field += character;
        if (character == '"') {
            field += character;
        }
    }
    return field + '"';
}

}  // namespace quillara
