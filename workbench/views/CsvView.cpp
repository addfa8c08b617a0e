#include "workbench/formats/DelimitedText.h"
#include "workbench/numbers/ExactNumbers.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

using Record = std::vector<std::string>;

std::string RecordText(const Record& record) {
    const bool looksEmpty = record.size() == 1 && record.front().empty();
    if (looksEmpty) {
        return "\"\"\n";
    }
    std::string text;
    for (const std::string& field : record) {
        text += &field == &record.front() ? "" : ",";
        text += QuotedField(field);
    }
    return text + '\n';
}

std::string TitleRecords(const SpreadsheetDocument& document) {
    std::string records;
    for (const std::string& title : document.Title) {
        for (const std::string& line : ShownLines(title)) {
            records += RecordText({line});
        }
    }
    return records;
}

Record HeaderRecord(const SpreadsheetDocument& document) {
    Record record = {UnsteeringText(document.Corner)};
    for (const SpreadsheetColumn& column : document.Columns) {
        record.push_back(ShownLine(column.Name));
    }
    return record;
}

std::string TextOf(const SpreadsheetCell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
        return UnsteeringText(*text);
    }
    const auto* number = std::get_if<double>(&cell);
    return number == nullptr ? std::string() : ExactNumberText(*number);
}

Record RowRecord(const SpreadsheetRow& row) {
    Record record = {UnsteeringText(row.NameForPeople())};
    for (const SpreadsheetCell& cell : row.Cells) {
        record.push_back(TextOf(cell));
    }
    return record;
}

std::string TableRecords(const SpreadsheetDocument& table) {
    std::string text = TitleRecords(table) + RecordText(HeaderRecord(table));
    for (const SpreadsheetRow& row : table.Rows) {
        text += RecordText(RowRecord(row));
    }
    return text;
}

}  // namespace

std::string CsvView(const OutputCollection& outputs) {
    std::string text;
    for (const OutputEntry& entry : outputs.Entries) {
        for (const SpreadsheetDocument& table : TablesOf(entry.Content)) {
            text += text.empty() ? "" : "\n";
            text += TableRecords(table);
        }
    }
    return text;
}

}  // namespace quillara
