#include <algorithm>

#include "workbench/views/DocumentViews.h"
#include "workbench/views/ShownTable.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::string_view ColumnGap = "  ";
constexpr std::size_t LongestRule = 72;  // a long description shouldn't wrap the rule above it

/// One column of the drawing, from the header down to the last row. The row names are a column like the others.
struct DrawnColumn {
    std::vector<std::string> NameLines{};
    std::vector<std::string> Cells{};
    bool IsLeft = false;
    bool HoldsTexts = false;
    std::size_t Width = 0;
};

void Measure(DrawnColumn& column) {
    for (const auto* texts : {&column.NameLines, &column.Cells}) {
        for (const std::string& text : *texts) {
            column.Width = std::max(column.Width, DisplayWidth(text));
        }
    }
}

DrawnColumn RowNames(const ShownTable& table) {
    DrawnColumn names{.NameLines = {table.Corner}, .IsLeft = true};
    for (const ShownRow& row : table.Rows) {
        names.Cells.push_back(row.Name);
    }
    return names;
}

DrawnColumn ColumnAt(const ShownTable& table, std::size_t index) {
    const ShownColumn& source = table.Columns[index];
    DrawnColumn column{.NameLines = source.NameLines, .IsLeft = source.HoldsTexts, .HoldsTexts = source.HoldsTexts};
    for (const ShownRow& row : table.Rows) {
        column.Cells.push_back(row.Cells[index].Text);
    }
    return column;
}

/// All columns, their names filled up from above to the same number of lines.
std::vector<DrawnColumn> Drawn(const ShownTable& table) {
    std::vector<DrawnColumn> columns = {RowNames(table)};
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        columns.push_back(ColumnAt(table, i));
    }
    std::size_t height = 0;
    for (DrawnColumn& column : columns) {
        Measure(column);
        height = std::max(height, column.NameLines.size());
    }
    for (DrawnColumn& column : columns) {
        column.NameLines.insert(column.NameLines.begin(), height - column.NameLines.size(), "");
    }
    return columns;
}

std::string Aligned(const DrawnColumn& column, const std::string& text) {
    const std::string blanks(column.Width - DisplayWidth(text), ' ');
    return column.IsLeft ? text + blanks : blanks + text;
}

/// One line of the drawing: what `textOf` gives for each column.
std::string Line(const std::vector<DrawnColumn>& columns, auto textOf) {
    std::string line;
    for (const DrawnColumn& column : columns) {
        line += &column == &columns.front() ? "" : ColumnGap;
        line += Aligned(column, textOf(column));
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

std::string Rule(const DrawnColumn& column) {
    return std::string(column.HoldsTexts ? std::min(column.Width, LongestRule) : column.Width, '-');
}

std::string Drawing(const ShownTable& table) {
    const std::vector<DrawnColumn> columns = Drawn(table);
    std::string text;
    for (std::size_t i = 0; i < columns.front().NameLines.size(); ++i) {
        text += Line(columns, [i](const DrawnColumn& column) { return column.NameLines[i]; });
    }
    text += Line(columns, Rule);
    for (std::size_t i = 0; i < table.Rows.size(); ++i) {
        text += Line(columns, [i](const DrawnColumn& column) { return column.Cells[i]; });
    }
    text += table.Rows.empty() ? "(no rows)\n" : "";
    return table.Note.empty() ? text : text + table.Note + '\n';
}

/// With an empty line behind them; none above the later ones of several tables of a graph.
std::string TitleLines(const ShownTable& table) {
    if (table.IsContinued) {
        return {};
    }
    std::string text = table.Title + '\n';
    for (const std::string& line : table.CaptionLines) {
        text += line + '\n';
    }
    return text + '\n';
}

std::string Heading(const OutputCollection& outputs, int step) {
    const std::string text = StepText(outputs, step);
    const std::string heading = "Step " + std::to_string(step) + (text.empty() ? "" : " ") + text;
    std::string lines = heading + '\n' + std::string(DisplayWidth(heading), '=') + '\n';
    for (const std::string& condition : StepsInForceText(outputs, step)) {
        lines += condition + '\n';
    }
    return lines;
}

}  // namespace

std::string TextView(const OutputCollection& outputs) {
    std::string text;
    const auto begin = [&text] { text += text.empty() ? "" : "\n"; };
    const std::vector<StepResults> steps = ResultsByStep(outputs);
    for (const StepResults& step : steps) {
        if (steps.size() > 1 || outputs.Selected) {
            begin();
            text += Heading(outputs, step.Step);
        }
        for (std::size_t i = step.First; i < step.Last; ++i) {
            for (const ShownTable& table : ShowTables(outputs, outputs.Entries[i])) {
                begin();
                text += TitleLines(table) + Drawing(table);
            }
        }
    }
    return text;
}

}  // namespace quillara
