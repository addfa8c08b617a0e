#include "workbench/exploration/TableClip.h"

#include <numeric>

#include "workbench/views/HtmlText.h"

namespace quillara {
namespace {

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : " ") + line;
    }
    return text;
}

bool IsSingleCell(const TablePart& part) {
    return part.Rows.size() == 1 && part.Columns.size() == 1 && !part.HasTitle;
}

std::string TitleLines(const ShownTable& table) {
    std::string text = table.Title + '\n';
    for (const std::string& line : table.CaptionLines) {
        text += line + '\n';
    }
    return text;
}

std::string TabText(const ShownTable& table, const TablePart& part) {
    std::string text = part.HasTitle ? TitleLines(table) : "";
    text += table.Corner;
    for (const std::size_t column : part.Columns) {
        text += '\t' + Joined(table.Columns[column].NameLines);
    }
    text += '\n';
    for (const std::size_t row : part.Rows) {
        text += table.Rows[row].Name;
        for (const std::size_t column : part.Columns) {
            text += '\t' + table.Rows[row].Cells[column].Text;
        }
        text += '\n';
    }
    return text;
}

/// Other programs read no style sheets: each cell bears its side.
std::string Side(const ShownColumn& column) {
    return column.HoldsTexts ? "align=\"left\"" : "align=\"right\"";
}

std::string HeaderCells(const ShownTable& table, const TablePart& part) {
    std::string cells = Element("th", "align=\"left\"", Escaped(table.Corner));
    for (const std::size_t column : part.Columns) {
        cells += Element("th", Side(table.Columns[column]), Escaped(Joined(table.Columns[column].NameLines)));
    }
    return Element("tr", "", cells) + '\n';
}

std::string RowCells(const ShownTable& table, const TablePart& part, const ShownRow& row) {
    std::string cells = Element("th", "align=\"left\"", Escaped(row.Name));
    for (const std::size_t column : part.Columns) {
        cells += Element("td", Side(table.Columns[column]), Escaped(row.Cells[column].Text));
    }
    return Element("tr", "", cells) + '\n';
}

std::string HtmlText(const ShownTable& table, const TablePart& part) {
    std::string title;
    if (part.HasTitle) {
        title = Element("p", "", Element("b", "", Escaped(table.Title))) + '\n';
        for (const std::string& line : table.CaptionLines) {
            title += Element("p", "", Escaped(line)) + '\n';
        }
    }
    std::string rows = HeaderCells(table, part);
    for (const std::size_t row : part.Rows) {
        rows += RowCells(table, part, table.Rows[row]);
    }
    return title + Element("table", "border=\"1\" cellspacing=\"0\" cellpadding=\"3\"", '\n' + rows) + '\n';
}

std::vector<std::size_t> FirstPlaces(std::size_t count) {
    std::vector<std::size_t> places(count);
    std::iota(places.begin(), places.end(), 0U);
    return places;
}

}  // namespace

TablePart AllOf(const ShownTable& table) {
    return {FirstPlaces(table.Rows.size()), FirstPlaces(table.Columns.size()), true};
}

TableClip ClipOf(const ShownTable& table, const TablePart& part) {
    if (IsSingleCell(part)) {
        const std::string& text = table.Rows[part.Rows.front()].Cells[part.Columns.front()].Text;
        return {text, Escaped(text)};
    }
    return {TabText(table, part), HtmlText(table, part)};
}

}  // namespace quillara
