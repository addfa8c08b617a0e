#include <algorithm>
#include <span>
#include <utility>

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

/// All columns.
std::vector<DrawnColumn> Drawn(const ShownTable& table) {
    std::vector<DrawnColumn> columns = {RowNames(table)};
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        columns.push_back(ColumnAt(table, i));
    }
    std::ranges::for_each(columns, Measure);
    return columns;
}

/// Columns side by side, their names filled up from above to the same number of lines.
std::vector<DrawnColumn> Levelled(std::vector<DrawnColumn> columns) {
    std::size_t height = 0;
    for (const DrawnColumn& column : columns) {
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

std::size_t WidthOf(std::span<const DrawnColumn> columns) {
    std::size_t width = 0;
    for (const DrawnColumn& column : columns) {
        width += column.Width + ColumnGap.size();
    }
    return width;
}

/// The columns of a table of several variables side by side as blocks that aren't too wide, each behind the names of
/// the rows; a variable stays in one block where it can. Another table is one block.
class Blocks {
  public:
    explicit Blocks(const ShownTable& table) : Table(table), Columns(Drawn(table)) {
        Begin();
        for (std::size_t i = 0; i < table.Columns.size();) {
            const std::size_t end = EndOfVariable(i);
            if (WidthOf(std::span(Columns).subspan(i + 1, end - i)) > RoomLeft() && !IsNew && end > i + 1) {
                Begin();
            }
            for (; i < end; ++i) {
                Put(i);
            }
        }
    }

    std::vector<std::vector<DrawnColumn>> Made;

  private:
    static constexpr std::size_t Widest = 120;

    /// Texts without a variable name the rows further.
    void Begin() {
        Made.push_back({Columns.front()});
        for (std::size_t i = 0; Made.size() > 1 && i < Table.Columns.size(); ++i) {
            if (Table.Columns[i].HoldsTexts && Table.Columns[i].Variable.empty()) {
                Made.back().push_back(Columns[i + 1]);
            }
        }
        IsNew = true;
    }

    void Put(std::size_t column) {
        const bool isOfVariable = !Table.Columns[column].Variable.empty();
        if (isOfVariable && !IsNew && WidthOf(std::span(Columns).subspan(column + 1, 1)) > RoomLeft()) {
            Begin();
        }
        Made.back().push_back(Columns[column + 1]);
        IsNew = IsNew && !isOfVariable;
    }

    [[nodiscard]] std::size_t EndOfVariable(std::size_t column) const {
        std::size_t end = column + 1;
        const std::string& variable = Table.Columns[column].Variable;
        while (!variable.empty() && end < Table.Columns.size() && Table.Columns[end].Variable == variable) {
            ++end;
        }
        return end;
    }

    [[nodiscard]] std::size_t RoomLeft() const {
        const std::size_t taken = WidthOf(Made.back());
        return taken < Widest ? Widest - taken : 0;
    }

    const ShownTable& Table;
    std::vector<DrawnColumn> Columns;  // the row names first
    bool IsNew = true;  // the block has no variable yet
};

std::string Drawing(const ShownTable& table, const std::vector<DrawnColumn>& columns) {
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

std::string Drawing(const ShownTable& table) {
    std::string text;
    for (std::vector<DrawnColumn>& block : Blocks(table).Made) {
        text += (text.empty() ? "" : "\n") + Drawing(table, Levelled(std::move(block)));
    }
    return text;
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

/// Steps with results, and between them the others where all states are shown.
std::vector<StepResults> ShownSteps(const OutputCollection& outputs) {
    std::vector<StepResults> steps = ResultsByStep(outputs);
    if (!outputs.ShowsAllStates || !outputs.Selected || steps.empty()) {
        return steps;
    }
    for (int step = 0; step <= static_cast<int>(outputs.Steps.size()); ++step) {
        if (std::ranges::find(steps, step, &StepResults::Step) == steps.end()) {
            steps.push_back({step, 0, 0});
        }
    }
    std::ranges::sort(steps, {}, &StepResults::Step);
    return steps;
}

}  // namespace

std::string TextView(const OutputCollection& outputs) {
    std::string text;
    const auto begin = [&text] { text += text.empty() ? "" : "\n"; };
    const std::vector<StepResults> steps = ShownSteps(outputs);
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
