#include "workbench/views/HtmlTable.h"

#include <algorithm>

#include "workbench/numbers/ExactNumbers.h"
#include "workbench/views/HtmlText.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

std::string CaptionOf(const ShownTable& table) {
    if (table.IsContinued) {
        return {};
    }
    std::string text = Element("h3", "", TitleOf(table));
    for (const std::string& line : table.CaptionLines) {
        text += Element("p", "", Escaped(line));
    }
    return Element("caption", "", Element("div", "class=\"caption\"", text)) + '\n';
}

/// A name that may be broken, where its column is narrow, at places without a blank: household_|size, Percent|(%),
/// 10|<=x.
std::string BreakableName(std::string_view name) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const std::string_view rest = name.substr(i);
        const bool isBreak = rest.starts_with('(') || rest.starts_with("<=") || name.substr(0, i).ends_with('_');
        result += i > 0 && isBreak ? "<wbr>" : "";
        result += Escaped(rest.substr(0, 1));
    }
    return result;
}

std::string ColumnName(const ShownColumn& column) {
    std::string name;
    for (const std::string& line : column.NameLines) {
        name += name.empty() ? "" : "<br>";
        name += BreakableName(line);
    }
    return name;
}

std::string HeaderRow(const ShownTable& table) {
    std::string row = table.Corner.empty() ? Element("td", "", "")
                                           : Element("th", "scope=\"col\" class=\"corner\"", Escaped(table.Corner));
    for (const ShownColumn& column : table.Columns) {
        row += Element("th", column.HoldsTexts ? "scope=\"col\" class=\"text\"" : "scope=\"col\"", ColumnName(column));
    }
    return Element("thead", "", Element("tr", "", row)) + '\n';
}

bool IsLong(const std::string& text) {
    constexpr std::size_t longestUnbroken = 32;
    return DisplayWidth(text) > longestUnbroken;
}

std::string CellAttributes(const ShownCell& cell, const ShownColumn& column) {
    if (cell.Percent) {
        return "class=\"share\" style=\"--share:" + ExactNumberText(std::clamp(*cell.Percent, 0.0, 100.0)) + '"';
    }
    if (!column.HoldsTexts) {
        return "";
    }
    return IsLong(cell.Text) ? "class=\"text long\"" : "class=\"text\"";
}

std::string BodyRow(const ShownTable& table, const ShownRow& row) {
    std::string text =
        Element("th", IsLong(row.Name) ? "scope=\"row\" class=\"long\"" : "scope=\"row\"", BreakableName(row.Name));
    for (std::size_t i = 0; i < row.Cells.size(); ++i) {
        const ShownCell& cell = row.Cells[i];
        text += Element("td", CellAttributes(cell, table.Columns[i]), Escaped(cell.Text));
    }
    return Element("tr", "", text) + '\n';
}

std::string Body(const ShownTable& table) {
    std::string rows;
    for (const ShownRow& row : table.Rows) {
        rows += BodyRow(table, row);
    }
    if (rows.empty()) {
        const std::string width = "colspan=\"" + std::to_string(table.Columns.size() + 1) + '"';
        rows = Element("tr", "", Element("td", width + " class=\"none text\"", "No rows")) + '\n';
    }
    return Element("tbody", "", '\n' + rows) + '\n';
}

}  // namespace

std::string TitleOf(const ShownTable& table) {
    return table.Title.empty() ? "Table" : Escaped(table.Title);
}

std::string HtmlTable(const ShownTable& table, const std::string& attributes) {
    const std::string region = "role=\"region\" tabindex=\"0\" aria-label=\"" + TitleOf(table) + '"';
    const std::string contents = CaptionOf(table) + HeaderRow(table) + Body(table);
    const std::string box = attributes + (attributes.empty() ? "" : " ") + region;
    const std::string note = table.Note.empty() ? "" : Element("p", "class=\"note\"", Escaped(table.Note)) + '\n';
    return Element("div", box, Element("table", "", '\n' + contents) + note) + '\n';
}

}  // namespace quillara
