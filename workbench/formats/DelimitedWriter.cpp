#include "workbench/formats/DelimitedWriter.h"

#include "workbench/formats/DelimitedColumns.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

std::string TextOfTable(const DataTable& table, const std::function<bool()>& cancelled) {
    WorkMonitor monitor({}, cancelled);
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
        monitor.Advance(columns.size());
    }
    return text;
}

}  // namespace quillara
