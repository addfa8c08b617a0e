#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphJson.h"
#include "workbench/views/JsonText.h"

namespace quillara {
namespace {

Json CellValue(const SpreadsheetCell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
        return TextValue(*text);
    }
    const auto* number = std::get_if<double>(&cell);
    return number == nullptr ? Json(nullptr) : NumberValue(*number);
}

std::string RowText(const SpreadsheetRow& row) {
    return OneLine({{"name", TextValue(row.Name)}, {"cells", Array(row.Cells, CellValue)}});
}

std::string SheetMembers(const SpreadsheetDocument& document) {
    const auto nameOf = [](const SpreadsheetColumn& column) { return TextValue(column.Name); };
    const auto isWhole = [](const SpreadsheetColumn& column) { return Json(column.Whole); };
    return Member("title", OneLine(Array(document.Title, TextValue))) +
           Member("corner", OneLine(TextValue(document.Corner))) +
           Member("columns", OneLine(Array(document.Columns, nameOf))) +
           Member("whole", OneLine(Array(document.Columns, isWhole))) +
           Member("rows", Stacked(document.Rows, "    ", RowText));
}

std::string EntryText(const OutputEntry& entry) {
    const auto* graph = std::get_if<GraphDocument>(&entry.Content);
    Json head = {{"kind", graph == nullptr ? "spreadsheet" : "graph"},
                 {"command", entry.Command},
                 {"sequence", entry.Sequence},
                 {"step", entry.Step}};
    if (graph != nullptr) {
        head["chart"] = ChartName(*graph);
    }
    std::string text = OneLine(head);
    text.pop_back();  // the object goes on below
    text += graph == nullptr ? SheetMembers(std::get<SpreadsheetDocument>(entry.Content)) : GraphMembers(*graph);
    return text + '}';
}

/// A member of its own, only when there is something to remark.
std::string RemarkMembers(const OutputCollection& outputs) {
    const auto textOf = [](const Remark& remark) {
        return OneLine(
            {{"code", TextValue(remark.Code)}, {"text", TextValue(remark.Text)}, {"advice", TextValue(remark.Advice)}});
    };
    const std::vector<Remark>& remarks = outputs.Noticed.All();
    return remarks.empty() ? "" : ",\n \"remarks\": " + Stacked(remarks, "  ", textOf);
}

}  // namespace

std::string JsonView(const OutputCollection& outputs) {
    const Json data = {
        {"file", TextValue(outputs.FileName)}, {"cases", outputs.Cases}, {"variables", outputs.Variables}};
    return "{\"data\": " + OneLine(data) + RemarkMembers(outputs) +
           ",\n \"documents\": " + Stacked(outputs.Entries, "  ", EntryText) + "}\n";
}

}  // namespace quillara
