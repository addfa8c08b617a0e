#include <algorithm>

#include "workbench/documents/GraphNumbers.h"
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

/// One of the runs on the page.
struct RunOnPage {
    const OutputCollection& Outputs;
    std::vector<StepResults> Steps;
    std::string Begin;  ///< of the names of its places, which no two runs share
};

/// A step's place on the page comes from where it stands among the others: a step that was left and come back to
/// would have its number twice.
std::string StepAnchor(const RunOnPage& run, std::size_t place) {
    return run.Begin + "step-" + std::to_string(place + 1);
}

bool IsGraph(const OutputEntry& entry) {
    return std::holds_alternative<GraphDocument>(entry.Content);
}

std::string EntryAnchor(const RunOnPage& run, std::size_t entry) {
    return run.Begin + (IsGraph(run.Outputs.Entries[entry]) ? "chart-" : "table-") + std::to_string(entry + 1);
}

std::string NumberedStep(const OutputCollection& outputs, int step) {
    const std::string number = Element("span", "class=\"number\"", "Step " + std::to_string(step));
    return number + Escaped(StepText(outputs, step));
}

/// The steps that were taken, whether results of each were asked for or not.
std::string StepList(const OutputCollection& outputs) {
    std::string items;
    for (std::size_t i = 0; i < outputs.Steps.size(); ++i) {
        items += Element("li", "", NumberedStep(outputs, static_cast<int>(i) + 1)) + '\n';
    }
    return items.empty() ? "" : Element("ol", "class=\"steps\" aria-label=\"Drill steps\"", '\n' + items) + '\n';
}

std::string Counted(int count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

/// What the host noticed, in a box.
std::string RemarkBox(const OutputCollection& outputs) {
    std::string items;
    for (const Remark& remark : outputs.Noticed.All()) {
        items += Element("li", "", Escaped(ShownLine(remark.Line()))) + '\n';
    }
    return items.empty() ? "" : Element("ul", "class=\"remarks\" aria-label=\"Remarks\"", '\n' + items) + '\n';
}

std::string ReportTitle(const OutputCollection& outputs) {
    return ShownLine(outputs.Title.empty() ? outputs.FileName : outputs.Title);
}

/// When and how the report was made.
std::string PageFoot(const OutputCollection& outputs) {
    std::string text = outputs.Made.empty() ? "" : Element("p", "", Escaped(ShownLine(outputs.Made))) + '\n';
    if (!outputs.Call.empty()) {
        text += Element("p", "", Element("code", "", Escaped(ShownLine(outputs.Call)))) + '\n';
    }
    return text.empty() ? "" : Element("footer", "class=\"page-foot\"", '\n' + text) + '\n';
}

std::string PageHead(const OutputCollection& outputs) {
    const std::string size = Counted(outputs.Cases, "case") + ", " + Counted(outputs.Variables, "variable");
    const std::string file = outputs.Title.empty() ? "" : ShownLine(outputs.FileName) + ": ";
    std::string text = Element("h1", "", Escaped(ReportTitle(outputs))) + Element("p", "", Escaped(file) + size) + '\n';
    for (const std::string& setting : outputs.Settings) {
        text += Element("p", "", Escaped(ShownLine(setting))) + '\n';
    }
    return Element("header", "class=\"page-head\"", text + StepList(outputs) + RemarkBox(outputs)) + '\n';
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
    const Subject& about =
        std::visit([](const auto& document) -> const Subject& { return document.About; }, entry.Content);
    return title.empty() ? (IsGraph(entry) ? "Chart" : "Table") : about.Noted(title);
}

/// Charts are named by what they show, so that their kind has to be said.
std::string ContentsLine(const OutputEntry& entry) {
    const std::string title = TitleOf(entry);
    const auto* graph = std::get_if<GraphDocument>(&entry.Content);
    const std::string kind = graph != nullptr ? KindOf(*graph) : std::string(VariablesOf(entry));
    return kind.empty() ? title : title + ' ' + Element("span", "class=\"kind\"", '(' + kind + ')');
}

std::string ContentsOfStep(const RunOnPage& run, const StepResults& step) {
    std::string items;
    for (const ReportGroup& group : ReportGroups(run.Outputs, step)) {
        for (const std::size_t entry : group) {
            const std::string line = ContentsLine(run.Outputs.Entries[entry]);
            items += Element("li", "", Link(EntryAnchor(run, entry), line)) + '\n';
        }
    }
    return Element("ul", "", '\n' + items);
}

std::string Contents(const RunOnPage& run) {
    std::string items;
    for (std::size_t i = 0; i < run.Steps.size(); ++i) {
        const std::string link = Link(StepAnchor(run, i), NumberedStep(run.Outputs, run.Steps[i].Step));
        items += Element("li", "", link + ContentsOfStep(run, run.Steps[i])) + '\n';
    }
    const std::string list = Element("summary", "", "Contents") + Element("ul", "", '\n' + items);
    return Element("nav", "class=\"contents\" aria-label=\"Contents\"", Element("details", "open", list)) + '\n';
}

/// One document; `group` is those that it stands with.
std::string DocumentText(const RunOnPage& run, std::size_t entry, const ReportGroup& group, const GraphPainter& paint) {
    const OutputEntry& shown = run.Outputs.Entries[entry];
    const std::string anchor = EntryAnchor(run, entry);
    if (const auto* graph = std::get_if<GraphDocument>(&shown.Content)) {
        return HtmlChart(*graph, anchor, paint, group.size() > 1);
    }
    return HtmlTable(ShowTables(run.Outputs, shown).front(), "class=\"result\" id=\"" + anchor + '"');
}

std::string GroupText(const RunOnPage& run, const ReportGroup& group, const GraphPainter& paint) {
    std::string text;
    for (const std::size_t entry : group) {
        text += DocumentText(run, entry, group, paint);
    }
    return group.size() > 1 ? Element("div", "class=\"beside\"", '\n' + text) + '\n' : text;
}

/// The steps in force, one a line.
std::string ConditionList(const OutputCollection& outputs, int step) {
    std::string items;
    for (const std::string& condition : StepsInForceText(outputs, step)) {
        items += Element("li", "", Escaped(condition)) + '\n';
    }
    return items.empty() ? ""
                         : Element("ul", "class=\"conditions\" aria-label=\"Steps in force\"", '\n' + items) + '\n';
}

std::string Sections(const RunOnPage& run, const GraphPainter& paint) {
    std::string sections;
    for (std::size_t i = 0; i < run.Steps.size(); ++i) {
        std::string text = '\n' + Element("h2", "", NumberedStep(run.Outputs, run.Steps[i].Step)) + '\n';
        text += ConditionList(run.Outputs, run.Steps[i].Step);
        for (const ReportGroup& group : ReportGroups(run.Outputs, run.Steps[i])) {
            text += GroupText(run, group, paint);
        }
        sections += Element("section", "id=\"" + StepAnchor(run, i) + '"', text) + '\n';
    }
    return sections.empty() ? Element("p", "class=\"none\"", "No results") + '\n' : sections;
}

/// Nothing is loaded, run or sent, whatever a name in the data says; styles stand in the page.
constexpr char SecurityPolicy[] =
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'; "
    "img-src data:; base-uri 'none'; form-action 'none'\">\n";

std::string RunText(const RunOnPage& run, const GraphPainter& paint) {
    const std::string main = Element(run.Begin.empty() ? "main" : "article", "", '\n' + Sections(run, paint));
    const std::string layout = Element("div", "class=\"layout\"", '\n' + Contents(run) + main + '\n');
    return PageHead(run.Outputs) + layout + '\n' + PageFoot(run.Outputs);
}

/// The titles or the data files, each once.
std::string PageTitle(std::span<const OutputCollection> runs) {
    std::vector<std::string> names;
    for (const OutputCollection& run : runs) {
        if (std::ranges::find(names, ReportTitle(run)) == names.end()) {
            names.push_back(ReportTitle(run));
        }
    }
    std::string title;
    for (const std::string& name : names) {
        title += (title.empty() ? "" : ", ") + ShownLine(name);
    }
    return Escaped(title);
}

std::string Head(const std::string& title, const std::string& body) {
    return "<head>\n<meta charset=\"utf-8\">\n" + std::string(SecurityPolicy) +
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
           Element("title", "", title + " - drill-down results") + '\n' +
           Element("style", "", std::string(HtmlStyle) + ThemeRules(body)) + "\n</head>\n";
}

}  // namespace

std::string HtmlView(const OutputCollection& outputs, const GraphPainter& paint) {
    return HtmlView(std::span(&outputs, 1), paint);
}

std::string HtmlView(std::span<const OutputCollection> runs, const GraphPainter& paint) {
    std::string text = "\n";
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const std::string begin = runs.size() == 1 ? "" : "analysis-" + std::to_string(i + 1) + '-';
        text += RunText({runs[i], ResultsByStep(runs[i]), begin}, paint);
    }
    const std::string body = Element("body", "", text);
    const std::string head = Head(PageTitle(runs), body);
    return "<!DOCTYPE html>\n" + Element("html", "lang=\"en\"", '\n' + head + body + '\n') + '\n';
}

}  // namespace quillara
