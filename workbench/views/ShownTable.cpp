#include "workbench/views/ShownTable.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "workbench/data/DateIntervals.h"
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

/// Adds the cells of one column to the rows.
void ShowColumn(const SpreadsheetDocument& document, std::size_t column, ShownTable& table) {
    const SpreadsheetColumn& source = document.Columns[column];
    table.Columns.push_back({ShownLines(source.Name), HoldsTexts(document, column)});
    const NumberFormat format(NumbersOf(document, column), MostDecimals(source));
    const bool isPercent = source.Name.starts_with(PercentMark);
    for (std::size_t i = 0; i < document.Rows.size(); ++i) {
        ShownCell cell;
        if (const std::string* text = TextAt(document.Rows[i], column)) {
            cell.Text = ShownLine(NameInDates(RowKind(document, i), *text));
        } else if (const double* number = NumberAt(document.Rows[i], column)) {
            cell.Text = format.TextOf(*number);
            if (isPercent && std::isfinite(*number)) {
                cell.Percent = *number;
            }
        }
        table.Rows[i].Cells.push_back(std::move(cell));
    }
}

}  // namespace

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

std::string StepText(const OutputCollection& outputs, int step) {
    if (step == 0) {
        return "All cases";
    }
    const auto place = static_cast<std::size_t>(step) - 1;
    return place < outputs.Steps.size() ? ShownLine(outputs.Steps[place].Text()) : std::string();
}

}  // namespace quillara
