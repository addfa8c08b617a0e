#include "workbench/formats/DelimitedWriter.h"

#include "workbench/formats/DelimitedColumns.h"
#include "workbench/formats/DelimitedText.h"

namespace quillara {

std::string TextOfTable(const DataTable& table, const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    std::string text;
    std::vector<ShownColumn> columns = ShownColumns(table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += (i == 0 ? "" : ",") + QuotedField(columns[i].Name());
    }
    text += '\n';
    monitor.Enter(0, 1, columns.size() * static_cast<std::size_t>(table.Cases));
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            text += i == 0 ? "" : ",";
            text += QuotedField(columns[i].Field(row));
        }
        text += '\n';
        monitor.Advance(columns.size());
    }
    return text;
}

}  // namespace quillara
