#include "workbench/formats/RecordReader.h"

#include <algorithm>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/TextFaults.h"
#include "workbench/formats/TextOfFile.h"

namespace quillara {
namespace {

constexpr double ShareOfRecords = 0.5;  // of reading a table

std::optional<char> ChooseSeparator(std::string_view text, const RecordOptions& options) {
    const std::optional<char> asked = options.Separator;
    if (!asked) {
        return FindSeparator(text, options.Separators).Separator;
    }
    if (!CanSeparate(*asked)) {
        RefuseSeparator();
    }
    return asked;
}

}  // namespace

RecordReader::RecordReader(const std::string& path, const RecordOptions& options, WorkMonitor& monitor)
    : RecordReader(path, BytesOfText(path, options.Encoding, monitor), options, monitor) {}

RecordReader::RecordReader(const std::string& path, std::string bytes, const RecordOptions& options,
                           WorkMonitor& monitor)
    : Path(path),
      Options(options),
      Monitor(monitor),
      Text(DecodedText(path, std::move(bytes), options.Encoding, monitor)),
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
            Fail(Line(), std::string(OpenQuote));
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

void RecordReader::FailForCount(std::size_t fields) {
    Fail(Line(), WrongCount({.Fields = fields, .Expected = *FieldsPerRecord}, Scanner.Separator(), Options));
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
    FailAtLine(Path, line, problem);
}

}  // namespace quillara
