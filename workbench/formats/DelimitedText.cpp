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
    RecordReader reader(path, options);
    std::vector<std::string_view> fields;
    std::vector<DelimitedRecord> records;
    while (reader.Next(fields)) {
        records.push_back({{fields.begin(), fields.end()}, reader.Line()});
    }
    return records;
}

}  // namespace quillara
