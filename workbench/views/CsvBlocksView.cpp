#include "workbench/views/CsvText.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

using Record = CsvRecord;

std::string TitleRecords(const SpreadsheetDocument& document) {
    std::string records;
    for (const std::string& title : document.Title) {
        for (const std::string& line : ShownLines(title)) {
            records += CsvText({line});
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

Record RowRecord(const SpreadsheetRow& row) {
    Record record = {UnsteeringText(row.NameForPeople())};
    for (const SpreadsheetCell& cell : row.Cells) {
        record.push_back(CsvCell(cell));
    }
    return record;
}

}  // namespace

std::string CsvTable(const SpreadsheetDocument& table) {
    std::string text = CsvText(HeaderRecord(table));
    for (const SpreadsheetRow& row : table.Rows) {
        text += CsvText(RowRecord(row));
    }
    return text;
}

std::string CsvBlocksView(const OutputCollection& outputs) {
    std::string text;
    for (const OutputEntry& entry : outputs.Entries) {
        for (const SpreadsheetDocument& table : TablesOf(entry.Content)) {
            text += text.empty() ? "" : "\n";
            text += TitleRecords(table) + CsvTable(table);
        }
    }
    return text;
}

}  // namespace quillara
