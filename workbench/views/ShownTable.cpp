#include "workbench/views/ShownTable.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>

#include "workbench/data/DateIntervals.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/NumberFormat.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::string_view PercentMark = "Percent";
constexpr std::string_view NoValue = "-";  // stands where a statistic has no value
constexpr int DecimalsOfPercents = 2;
constexpr int DecimalsOfNumbers = 4;

/// The cell of a row and a column; null for one that the row doesn't have.
const SpreadsheetCell* CellAt(const SpreadsheetRow& row, std::size_t column) {
    return column < row.Cells.size() ? &row.Cells[column] : nullptr;
}

const std::string* TextAt(const SpreadsheetRow& row, std::size_t column) {
    return std::get_if<std::string>(CellAt(row, column));
}

const double* NumberAt(const SpreadsheetRow& row, std::size_t column) {
    return std::get_if<double>(CellAt(row, column));
}

std::vector<double> NumbersOf(const SpreadsheetDocument& document, std::size_t column) {
    std::vector<double> numbers;
    for (const SpreadsheetRow& row : document.Rows) {
        if (const double* number = NumberAt(row, column)) {
            numbers.push_back(*number);
        }
    }
    return numbers;
}

bool HoldsTexts(const SpreadsheetDocument& document, std::size_t column) {
    const auto isNumber = [column](const SpreadsheetRow& row) { return NumberAt(row, column) != nullptr; };
    const auto isText = [column](const SpreadsheetRow& row) {
        const std::string* text = TextAt(row, column);
        return text != nullptr && *text != NoValue;
    };
    return std::ranges::any_of(document.Rows, isText) && std::ranges::none_of(document.Rows, isNumber);
}

int MostDecimals(const SpreadsheetColumn& column) {
    if (column.Whole) {
        return 0;
    }
    return column.Name.find(PercentMark) == std::string::npos ? DecimalsOfNumbers : DecimalsOfPercents;
}

/// What the values of a row's variable stand for, where each row is about another variable.
ValueKind RowKind(const SpreadsheetDocument& document, std::size_t row) {
    const bool isByVariable = document.About.Variables.size() == document.Rows.size();
    return isByVariable ? document.About.KindOf(row) : ValueKind::Number;
}

/// The text of a row's cell with dates in place of numbers.
std::string InDates(const SpreadsheetDocument& document, std::size_t row, const std::string& text) {
    const ValueKind kind = RowKind(document, row);
    if (kind != ValueKind::DateTime) {
        return NameInDates(kind, text);
    }
    const std::optional<CategoryBounds>& step = document.About.Variables[row].Step;
    const bool isCategory = text.find('x') != std::string::npos || DecimalNumber(text);
    return step && isCategory ? NameInDates(kind, text, step->Lower, step->Upper) : text;
}

/// Adds the cells of one column to the rows.
void ShowColumn(const SpreadsheetDocument& document, std::size_t column, ShownTable& table) {
    const SpreadsheetColumn& source = document.Columns[column];
    table.Columns.push_back({ShownLines(source.Name), HoldsTexts(document, column), ShownLine(source.Variable)});
    const NumberFormat format(NumbersOf(document, column), MostDecimals(source));
    const bool isPercent = source.Name.starts_with(PercentMark);
    for (std::size_t i = 0; i < document.Rows.size(); ++i) {
        ShownCell cell;
        if (const std::string* text = TextAt(document.Rows[i], column)) {
            cell.Text = ShownLine(InDates(document, i, *text));
        } else if (const double* number = NumberAt(document.Rows[i], column)) {
            cell.Text = format.TextOf(*number);
            if (isPercent && std::isfinite(*number)) {
                cell.Percent = *number;
            }
        }
        table.Rows[i].Cells.push_back(std::move(cell));
    }
}

/// What the analysis puts below the title of a result to say its subset.
constexpr std::string_view CaptionBegin = "N Total: ";

/// The cases before the first step, of which each step leaves some.
SubsetSize Whole(const OutputCollection& outputs) {
    return outputs.Selected.value_or(SubsetSize{outputs.Cases, std::nullopt});
}

std::string WeightText(double weight) {
    return NumberFormat({weight}, DecimalsOfNumbers).TextOf(weight);
}

/// "144 of 891 cases, weight 151.2 of 903.4".
std::string SizeText(const SubsetSize& left, const SubsetSize& whole) {
    std::string text =
        std::to_string(left.Cases) + " of " + std::to_string(whole.Cases) + (whole.Cases == 1 ? " case" : " cases");
    if (left.Weight) {
        text += ", weight " + WeightText(*left.Weight) + (whole.Weight ? " of " + WeightText(*whole.Weight) : "");
    }
    return text;
}

/// "891 cases (1309 in the data), weight 903.4".
std::string SizeText(const SubsetSize& selected, std::int32_t inData) {
    std::string text = std::to_string(selected.Cases) + (selected.Cases == 1 ? " case" : " cases");
    text += selected.Cases == inData ? "" : " (" + std::to_string(inData) + " in the data)";
    return selected.Weight ? text + ", weight " + WeightText(*selected.Weight) : text;
}

}  // namespace

/// Of many the most frequent ones, and how many the others have.
std::string MissingText(const SpreadsheetDocument& document) {
    constexpr std::size_t most = 8;
    std::vector<MissingCount> counts = document.Missing;
    if (counts.size() > most) {
        std::ranges::stable_sort(counts, std::ranges::greater(), &MissingCount::Count);
        MissingCount others{"", std::to_string(counts.size() - most + 1) + " others", 0.0};
        std::for_each(counts.begin() + most - 1, counts.end(),
                      [&](const MissingCount& each) { others.Count += each.Count; });
        counts.resize(most - 1);
        counts.push_back(std::move(others));
    }
    std::string text;
    for (const MissingCount& each : counts) {
        text += (text.empty() ? "Missing: " : ", ") + ShownLine(each.Name()) + " " +
                NumberFormat({each.Count}, DecimalsOfNumbers).TextOf(each.Count);
    }
    return text;
}

ShownTable ShowTable(const SpreadsheetDocument& document) {
    ShownTable table;
    for (const std::string& text : document.Title) {
        std::ranges::move(ShownLines(text), std::back_inserter(table.CaptionLines));
    }
    if (!table.CaptionLines.empty()) {
        table.Title = std::move(table.CaptionLines.front());
        table.CaptionLines.erase(table.CaptionLines.begin());
    }
    table.Corner = ShownLine(document.Corner);
    for (const SpreadsheetRow& row : document.Rows) {
        table.Rows.push_back({ShownLine(row.NameForPeople()), {}});
    }
    for (std::size_t column = 0; column < document.Columns.size(); ++column) {
        ShowColumn(document, column, table);
    }
    table.Note = MissingText(document);
    return table;
}

std::vector<ShownTable> ShowTables(const DocumentContent& content) {
    std::vector<ShownTable> tables;
    for (const SpreadsheetDocument& table : TablesOf(content)) {
        tables.push_back(ShowTable(table));
        tables.back().IsContinued = tables.size() > 1;
    }
    return tables;
}

std::vector<ShownTable> ShowTables(const OutputCollection& outputs, const OutputEntry& entry) {
    DocumentContent content = entry.Content;
    std::vector<std::string>& title = std::visit(
        [](auto& document) -> auto& { return document.Title; }, content);
    if (outputs.Selected && entry.Command != 0 && title.size() > 1 && title[1].starts_with(CaptionBegin)) {
        title.erase(title.begin() + 1);
    }
    if (entry.Command == 0) {  // a line each, whatever names it holds
        std::ranges::transform(title, title.begin(), ShownLine);
    }
    return ShowTables(content);
}

std::vector<StepResults> ResultsByStep(const OutputCollection& outputs) {
    std::vector<StepResults> steps;
    for (std::size_t i = 0; i < outputs.Entries.size(); ++i) {
        const int step = outputs.Entries[i].Step;
        if (steps.empty() || steps.back().Step != step) {
            steps.push_back({step, i, i});
        }
        steps.back().Last = i + 1;
    }
    return steps;
}

std::optional<SubsetSize> LeftBehind(const OutputCollection& outputs, int step) {
    const auto place = static_cast<std::size_t>(step);
    return step == 0 ? outputs.Selected : place <= outputs.Steps.size() ? outputs.Steps[place - 1].Left : std::nullopt;
}

std::string StepText(const OutputCollection& outputs, int step) {
    const auto place = static_cast<std::size_t>(step);
    if (place > outputs.Steps.size()) {
        return {};
    }
    const bool isWhole = step == 0 && (!outputs.Selected || outputs.Selected->Cases == outputs.Cases);
    std::string text = isWhole ? "All cases" : step == 0 ? "Cases in use" : ShownLine(outputs.Steps[place - 1].Text());
    const std::optional<SubsetSize> left = LeftBehind(outputs, step);
    if (!left) {
        return text;
    }
    return text + ", " + (step == 0 ? SizeText(*left, outputs.Cases) : SizeText(*left, Whole(outputs)));
}

std::vector<std::string> StepsInForceText(const OutputCollection& outputs, int step) {
    const auto place = static_cast<std::size_t>(step);
    if (step == 0 || place > outputs.Steps.size()) {
        return {};
    }
    std::vector<std::string> texts;
    for (const StepTaken& down : StepsInForce(outputs.Steps, place)) {
        texts.push_back(ShownLine(down.Condition()));
    }
    const bool isSaid = texts.size() == 1 && outputs.Steps[place - 1].Kind == StepKind::Down;
    return isSaid ? std::vector<std::string>() : texts;
}

}  // namespace quillara
