#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphJson.h"
#include "workbench/views/JsonText.h"
#include "workbench/views/ShownTable.h"
#include "workbench/views/ShownText.h"

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

/// Only where the host tells missing data apart.
std::string MissingMember(const SpreadsheetDocument& document) {
    const auto valueOf = [](const MissingCount& count) {
        return Json{{"code", count.Code.empty() ? Json(nullptr) : TextValue(count.Code)},
                    {"label", TextValue(count.Label)},
                    {"count", NumberValue(count.Count)}};
    };
    return document.Missing.empty() ? "" : Member("missing", OneLine(Array(document.Missing, valueOf)));
}

std::string SheetMembers(const SpreadsheetDocument& document) {
    const auto nameOf = [](const SpreadsheetColumn& column) { return TextValue(column.Name); };
    const auto isWhole = [](const SpreadsheetColumn& column) { return Json(column.Whole); };
    const auto plainNameOf = [](const SpreadsheetColumn& column) { return Json(ShownLine(column.Name)); };
    return Member("title", OneLine(Array(document.Title, TextValue))) +
           Member("corner", OneLine(TextValue(document.Corner))) +
           Member("columns", OneLine(Array(document.Columns, nameOf))) +
           Member("names", OneLine(Array(document.Columns, plainNameOf))) +
           Member("whole", OneLine(Array(document.Columns, isWhole))) +
           Member("rows", Stacked(document.Rows, "    ", RowText)) + MissingMember(document);
}

Json SideName(ResultSide side) {
    switch (side) {
        case ResultSide::Drill:
            return "drill";
        case ResultSide::Review:
            return "review";
        case ResultSide::Unknown:
            break;
    }
    return nullptr;
}

std::string EntryText(const OutputEntry& entry) {
    const auto* graph = std::get_if<GraphDocument>(&entry.Content);
    const Subject& about =
        std::visit([](const auto& content) -> const Subject& { return content.About; }, entry.Content);
    const ShownVariable* variable = about.OnlyVariable();
    Json head = {{"kind", graph == nullptr ? "spreadsheet" : "graph"},
                 {"command", entry.Command},
                 {"sequence", entry.Sequence},
                 {"step", entry.Step},
                 {"result", entry.Result.empty() ? Json(nullptr) : TextValue(entry.Result)},
                 {"variable", variable == nullptr ? Json(nullptr) : TextValue(variable->Name)},
                 {"side", SideName(about.Side)}};
    if (!about.By.empty()) {
        head["by"] = Array(about.By, TextValue);
    }
    if (about.Weights != WeightUse::None) {
        head["weights"] = about.WeightWord();
    }
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

Json KindOf(const StepTaken& step) {
    return step.Kind == StepKind::Down ? "down" : "up";
}

/// What remains behind the first `count` steps; null when it isn't counted.
Json SubsetValue(const OutputCollection& outputs, std::size_t count) {
    const std::optional<SubsetSize> left = LeftBehind(outputs, static_cast<int>(count));
    if (!left) {
        return nullptr;
    }
    const auto stepOf = [](const StepTaken& step) {
        return Json{
            {"variable", TextValue(step.Variable)}, {"category", TextValue(step.Category)}, {"kind", KindOf(step)}};
    };
    return {{"cases", left->Cases},
            {"weight", left->Weight ? NumberValue(*left->Weight) : Json(nullptr)},
            {"of", outputs.Selected ? outputs.Selected->Cases : outputs.Cases},
            {"steps", Array(StepsInForce(outputs.Steps, count), stepOf)}};
}

/// All states, that before the first step too.
std::string StepMembers(const OutputCollection& outputs) {
    if (!outputs.Selected) {
        return {};
    }
    std::vector<std::string> steps;
    for (std::size_t count = 0; count <= outputs.Steps.size(); ++count) {
        Json step = {{"step", count}};
        if (count > 0) {
            const StepTaken& taken = outputs.Steps[count - 1];
            step["kind"] = KindOf(taken);
            step["variable"] = TextValue(taken.Variable);
            step["category"] = taken.Kind == StepKind::Down ? TextValue(taken.Category) : Json(nullptr);
        }
        step["subset"] = SubsetValue(outputs, count);
        steps.push_back(OneLine(step));
    }
    return ",\n \"steps\": " + Stacked(steps, "  ", [](const std::string& step) { return step; });
}

}  // namespace

std::string JsonView(const OutputCollection& outputs) {
    const Json data = {
        {"file", TextValue(outputs.FileName)}, {"cases", outputs.Cases}, {"variables", outputs.Variables}};
    return "{\"data\": " + OneLine(data) + RemarkMembers(outputs) + StepMembers(outputs) +
           ",\n \"documents\": " + Stacked(outputs.Entries, "  ", EntryText) + "}\n";
}

}  // namespace quillara
