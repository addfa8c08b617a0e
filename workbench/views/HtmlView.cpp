#include <algorithm>

#include "workbench/views/DocumentViews.h"
#include "workbench/views/HtmlChart.h"
#include "workbench/views/HtmlStyle.h"
#include "workbench/views/HtmlTable.h"
#include "workbench/views/HtmlText.h"
#include "workbench/views/ReportGroups.h"
#include "workbench/views/ShownText.h"
#include "workbench/views/ThemedColors.h"

namespace quillara {
namespace {

std::string Link(const std::string& target, const std::string& contents) {
    return Element("a", "href=\"#" + target + '"', contents);
}

/// A step's place on the page comes from where it stands among the others: a step that was left and come back to
/// would have its number twice.
std::string StepAnchor(std::size_t place) {
    return "step-" + std::to_string(place + 1);
}

bool IsGraph(const OutputEntry& entry) {
    return std::holds_alternative<GraphDocument>(entry.Content);
}

std::string EntryAnchor(const OutputCollection& outputs, std::size_t entry) {
    return (IsGraph(outputs.Entries[entry]) ? "chart-" : "table-") + std::to_string(entry + 1);
}

std::string NumberedStep(const OutputCollection& outputs, int step) {
    const std::string number = Element("span", "class=\"number\"", "Step " + std::to_string(step));
    return number + Escaped(StepText(outputs, step));
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

/// Which variables a table is about: those of either side have tables of the same titles.
std::string_view VariablesOf(const OutputEntry& entry) {
    const auto* table = std::get_if<SpreadsheetDocument>(&entry.Content);
    switch (table == nullptr ? ResultSide::Unknown : table->About.Side) {
        case ResultSide::Drill:
            return "drill variables";
        case ResultSide::Review:
            return "review variables";
        case ResultSide::Unknown:
            break;
    }
    return {};
}

std::string TitleOf(const OutputEntry& entry) {
    const std::vector<std::string>& lines = std::visit(
        [](const auto& document) -> const auto& { return document.Title; }, entry.Content);
    const std::string title = lines.empty() ? "" : Escaped(ShownLines(lines.front()).front());
    return title.empty() ? (IsGraph(entry) ? "Chart" : "Table") : title;
}

std::string ContentsLine(const OutputEntry& entry) {
    const std::string title = TitleOf(entry);
    const std::string_view variables = VariablesOf(entry);
    return variables.empty() ? title
                             : title + ' ' + Element("span", "class=\"kind\"", '(' + std::string(variables) + ')');
}

std::string ContentsOfStep(const OutputCollection& outputs, const StepResults& step) {
    std::string items;
    for (const ReportGroup& group : ReportGroups(outputs, step)) {
        for (const std::size_t entry : group) {
            const std::string line = ContentsLine(outputs.Entries[entry]);
            items += Element("li", "", Link(EntryAnchor(outputs, entry), line)) + '\n';
        }
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

/// One document; `group` is those that it stands with.
std::string DocumentText(const OutputCollection& outputs, std::size_t entry, const ReportGroup& group,
                         const GraphPainter& paint) {
    const DocumentContent& content = outputs.Entries[entry].Content;
    const std::string anchor = EntryAnchor(outputs, entry);
    if (const auto* graph = std::get_if<GraphDocument>(&content)) {
        return HtmlChart(*graph, anchor, paint, group.size() > 1);
    }
    return HtmlTable(ShowTables(content).front(), "class=\"result\" id=\"" + anchor + '"');
}

std::string GroupText(const OutputCollection& outputs, const ReportGroup& group, const GraphPainter& paint) {
    std::string text;
    for (const std::size_t entry : group) {
        text += DocumentText(outputs, entry, group, paint);
    }
    return group.size() > 1 ? Element("div", "class=\"beside\"", '\n' + text) + '\n' : text;
}

std::string Sections(const OutputCollection& outputs, const std::vector<StepResults>& steps,
                     const GraphPainter& paint) {
    std::string sections;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::string text = '\n' + Element("h2", "", NumberedStep(outputs, steps[i].Step)) + '\n';
        for (const ReportGroup& group : ReportGroups(outputs, steps[i])) {
            text += GroupText(outputs, group, paint);
        }
        sections += Element("section", "id=\"" + StepAnchor(i) + '"', text) + '\n';
    }
    return sections.empty() ? Element("p", "class=\"none\"", "No results") + '\n' : sections;
}

/// Nothing is loaded, run or sent, whatever a name in the data says; styles stand in the page.
constexpr char SecurityPolicy[] =
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'; "
    "img-src data:; base-uri 'none'; form-action 'none'\">\n";

std::string Head(const OutputCollection& outputs, const std::string& body) {
    return "<head>\n<meta charset=\"utf-8\">\n" + std::string(SecurityPolicy) +
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
           Element("title", "", Escaped(ShownLine(outputs.FileName)) + " - drill-down results") + '\n' +
           Element("style", "", std::string(HtmlStyle) + ThemeRules(body)) + "\n</head>\n";
}

}  // namespace

std::string HtmlView(const OutputCollection& outputs, const GraphPainter& paint) {
    const std::vector<StepResults> steps = ResultsByStep(outputs);
    const std::string main = Element("main", "", '\n' + Sections(outputs, steps, paint));
    const std::string layout = Element("div", "class=\"layout\"", '\n' + Contents(outputs, steps) + main + '\n');
    const std::string body = Element("body", "", '\n' + PageHead(outputs) + layout + '\n');
    return "<!DOCTYPE html>\n" + Element("html", "lang=\"en\"", '\n' + Head(outputs, body) + body + '\n') + '\n';
}

}  // namespace quillara
