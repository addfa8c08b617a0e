#include <algorithm>

#include "workbench/data/ExactNumbers.h"
#include "workbench/documents/DocumentViews.h"
#include "workbench/documents/HtmlStyle.h"
#include "workbench/documents/NumberTexts.h"
#include "workbench/documents/ShownTable.h"
#include "workbench/documents/ShownText.h"

namespace quillara {
namespace {

/// A text of the user as it stands on the page, for contents and for attributes in double quotes.
std::string Escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

std::string Element(const std::string& name, const std::string& attributes, const std::string& contents) {
    return '<' + name + (attributes.empty() ? "" : " ") + attributes + '>' + contents + "</" + name + '>';
}

std::string Link(const std::string& target, const std::string& contents) {
    return Element("a", "href=\"#" + target + '"', contents);
}

/// A step's place on the page comes from where it stands among the others: a step that was left and come back to
/// would have its number twice.
std::string StepAnchor(std::size_t place) {
    return "step-" + std::to_string(place + 1);
}

std::string TableAnchor(std::size_t entry) {
    return "table-" + std::to_string(entry + 1);
}

std::string NumberedStep(const OutputCollection& outputs, int step) {
    const std::string number = Element("span", "class=\"number\"", "Step " + std::to_string(step));
    return number + Escaped(StepText(outputs, step));
}

std::string TitleOf(const ShownTable& table) {
    return table.Title.empty() ? "Table" : Escaped(table.Title);
}

std::string CaptionOf(const ShownTable& table) {
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

/// The table may be wider than the page: its box scrolls, also with the keyboard.
std::string TableText(const OutputCollection& outputs, std::size_t entry) {
    const ShownTable table = ShowTable(outputs.Entries[entry].Spreadsheet);
    const std::string attributes = "class=\"result\" id=\"" + TableAnchor(entry) +
                                   "\" role=\"region\" tabindex=\"0\" aria-label=\"" + TitleOf(table) + '"';
    const std::string contents = CaptionOf(table) + HeaderRow(table) + Body(table);
    return Element("div", attributes, Element("table", "", '\n' + contents)) + '\n';
}

/// The steps that were taken, whether results of each were asked for or not.
std::string StepList(const OutputCollection& outputs) {
    std::string items;
    for (std::size_t i = 0; i < outputs.StepTexts.size(); ++i) {
        items += Element("li", "", NumberedStep(outputs, static_cast<int>(i) + 1)) + '\n';
    }
    return items.empty() ? "" : Element("ol", "class=\"steps\" aria-label=\"Drill steps\"", '\n' + items) + '\n';
}

std::string Counted(int count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

std::string PageHead(const OutputCollection& outputs) {
    const std::string size = Counted(outputs.Cases, "case") + ", " + Counted(outputs.Variables, "variable");
    std::string text = Element("h1", "", Escaped(ShownLine(outputs.FileName))) + Element("p", "", size) + '\n';
    for (const std::string& setting : outputs.Settings) {
        text += Element("p", "", Escaped(ShownLine(setting))) + '\n';
    }
    return Element("header", "class=\"page-head\"", text + StepList(outputs)) + '\n';
}

/// Which variables a table is about, where another command makes tables of the same titles.
std::string_view VariablesOf(int command) {
    switch (command) {
        case 9059:
        case 9060:
            return "drill variables";
        case 9081:
        case 9082:
            return "review variables";
        default:
            return {};
    }
}

std::string ContentsLine(const OutputEntry& entry) {
    const std::string title = TitleOf(ShowTable(entry.Spreadsheet));
    const std::string_view variables = VariablesOf(entry.Command);
    return variables.empty() ? title
                             : title + ' ' + Element("span", "class=\"kind\"", '(' + std::string(variables) + ')');
}

std::string ContentsOfStep(const OutputCollection& outputs, const StepResults& step) {
    std::string items;
    for (std::size_t i = step.First; i < step.Last; ++i) {
        items += Element("li", "", Link(TableAnchor(i), ContentsLine(outputs.Entries[i]))) + '\n';
    }
    return Element("ul", "", '\n' + items);
}

std::string Contents(const OutputCollection& outputs, const std::vector<StepResults>& steps) {
    std::string items;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const std::string link = Link(StepAnchor(i), NumberedStep(outputs, steps[i].Step));
        items += Element("li", "", link + ContentsOfStep(outputs, steps[i])) + '\n';
    }
    const std::string list = Element("summary", "", "Contents") + Element("ul", "", '\n' + items);
    return Element("nav", "class=\"contents\" aria-label=\"Contents\"", Element("details", "open", list)) + '\n';
}

std::string Sections(const OutputCollection& outputs, const std::vector<StepResults>& steps) {
    std::string sections;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::string text = '\n' + Element("h2", "", NumberedStep(outputs, steps[i].Step)) + '\n';
        for (std::size_t entry = steps[i].First; entry < steps[i].Last; ++entry) {
            text += TableText(outputs, entry);
        }
        sections += Element("section", "id=\"" + StepAnchor(i) + '"', text) + '\n';
    }
    return sections.empty() ? Element("p", "class=\"none\"", "No results") + '\n' : sections;
}

std::string Head(const OutputCollection& outputs) {
    return "<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
           Element("title", "", Escaped(ShownLine(outputs.FileName)) + " - drill-down results") + '\n' +
           Element("style", "", std::string(htmlStyle)) + "\n</head>\n";
}

}  // namespace

std::string HtmlView(const OutputCollection& outputs) {
    const std::vector<StepResults> steps = ResultsByStep(outputs);
    const std::string main = Element("main", "", '\n' + Sections(outputs, steps));
    const std::string layout = Element("div", "class=\"layout\"", '\n' + Contents(outputs, steps) + main + '\n');
    const std::string body = Element("body", "", '\n' + PageHead(outputs) + layout + '\n');
    return "<!DOCTYPE html>\n" + Element("html", "lang=\"en\"", '\n' + Head(outputs) + body + '\n') + '\n';
}

}  // namespace quillara
