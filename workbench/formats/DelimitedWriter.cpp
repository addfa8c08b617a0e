#include "workbench/formats/DelimitedWriter.h"

#include "workbench/formats/DelimitedColumns.h"
#include "workbench/formats/DelimitedText.h"

namespace quillara {
namespace {

constexpr std::size_t BytesAtOnce = 1 << 20;

}  // namespace

void WriteDelimitedText(const DataTable& table, const ByteSink& write, WorkMonitor& monitor) {
    std::string text;
    std::vector<ShownColumn> columns = ShownColumns(table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += (i == 0 ? "" : ",") + QuotedField(columns[i].Name());
    }
    text += '\n';
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            text += i == 0 ? "" : ",";
            text += QuotedField(columns[i].Field(row));
        }
        text += '\n';
        if (text.size() >= BytesAtOnce) {
            write(text);
            text.clear();
        }
        monitor.Advance(columns.size());
    }
    write(text);
}

std::string TextOfTable(const DataTable& table) {
    WorkMonitor monitor;
    return TextOfTable(table, monitor);
}

std::string TextOfTable(const DataTable& table, WorkMonitor& monitor) {
    std::string text;
    WriteDelimitedText(
        table, [&](std::string_view bytes) { text += bytes; }, monitor);
    return text;
}

}  // namespace quillara
