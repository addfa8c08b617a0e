#include "workbench/views/TextTable.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::string_view ColumnGap = "  ";
constexpr std::string_view Indent = "  ";  // of the further lines of a row's name, which could pass for other rows
constexpr std::size_t LongestRule = 72;  // a long description shouldn't wrap the rule above it

constexpr std::size_t Widest = TextWidth + ColumnGap.size();  // of columns with a gap behind each

// How wide texts are in a table that would be too wide.
constexpr std::size_t WidestName = 40;
constexpr std::size_t WidestText = 30;
constexpr std::size_t WidestHeading = 20;

using Lines = std::vector<std::string>;

std::size_t WidthOf(const Lines& lines) {
    std::size_t width = 0;
    for (const std::string& line : lines) {
        width = std::max(width, DisplayWidth(line));
    }
    return width;
}

Lines AllWrapped(const Lines& lines, std::size_t width) {
    Lines wrapped;
    for (const std::string& line : lines) {
        std::ranges::move(Wrapped(line, width), std::back_inserter(wrapped));
    }
    return wrapped;
}

/// One column of the drawing, from the header down to the last row. The row names are a column like the others.
struct DrawnColumn {
    Lines NameLines{};
    std::vector<Lines> Cells{};
    bool IsLeft = false;
    bool HoldsTexts = false;
    std::string Variable{};
    std::string Over{};  ///< a name that stands once over this column and its neighbours; empty: none
    std::size_t Width = 0;

    [[nodiscard]] std::size_t WidthOfCells() const {
        std::size_t width = 0;
        for (const Lines& cell : Cells) {
            width = std::max(width, WidthOf(cell));
        }
        return width;
    }
    void Measure() { Width = std::max(WidthOf(NameLines), WidthOfCells()); }
    /// Names the rows further, in every block.
    [[nodiscard]] bool NamesRows() const { return HoldsTexts && Variable.empty(); }
};

DrawnColumn RowNames(const ShownTable& table) {
    DrawnColumn names{.NameLines = {table.Corner}, .IsLeft = true};
    for (const ShownRow& row : table.Rows) {
        names.Cells.push_back({row.Name});
    }
    return names;
}

DrawnColumn ColumnAt(const ShownTable& table, std::size_t index) {
    const ShownColumn& source = table.Columns[index];
    DrawnColumn column{.NameLines = source.NameLines,
                       .IsLeft = source.HoldsTexts,
                       .HoldsTexts = source.HoldsTexts,
                       .Variable = source.Variable};
    if (column.NameLines.size() > 1 && column.NameLines.front() == column.Variable) {
        column.Over = column.Variable;
        column.NameLines.erase(column.NameLines.begin());
    }
    for (const ShownRow& row : table.Rows) {
        column.Cells.push_back({row.Cells[index].Text});
    }
    return column;
}

/// The end of the columns of one variable; the next column where there is none.
std::size_t EndOfVariable(const std::vector<DrawnColumn>& columns, std::size_t column) {
    std::size_t end = column + 1;
    const std::string& variable = columns[column].Variable;
    while (!variable.empty() && end < columns.size() && columns[end].Variable == variable) {
        ++end;
    }
    return end;
}

/// What the names of all columns of a variable end with ("Percent of row") stands once over them.
void ShareEndings(std::vector<DrawnColumn>& columns) {
    for (std::size_t i = 1; i < columns.size();) {
        const std::span<DrawnColumn> own = std::span(columns).subspan(i, EndOfVariable(columns, i) - i);
        const std::string ending = own.front().NameLines.back();
        const bool areAlike = std::ranges::all_of(own, [&ending](const DrawnColumn& column) {
            return column.Over.empty() && column.NameLines.size() > 1 && column.NameLines.back() == ending;
        });
        if (own.size() > 1 && areAlike) {
            for (DrawnColumn& column : own) {
                column.Over = ending;
                column.NameLines.pop_back();
            }
        }
        i += own.size();
    }
}

std::size_t WidthOf(std::span<const DrawnColumn> columns) {
    std::size_t width = 0;
    for (const DrawnColumn& column : columns) {
        width += column.Width + ColumnGap.size();
    }
    return width;
}

bool AreTooWide(std::span<const DrawnColumn> columns) {
    return WidthOf(columns) > Widest;
}

void WrapName(Lines& name) {
    name = AllWrapped(name, WidestName - Indent.size());
    std::for_each(name.begin() + 1, name.end(), [](std::string& line) { line.insert(0, Indent); });
}

void WrapRowNames(DrawnColumn& names) {
    names.NameLines = AllWrapped(names.NameLines, WidestName);
    std::ranges::for_each(names.Cells, WrapName);
    names.Measure();
}

/// Numbers stand whole.
void WrapColumn(DrawnColumn& column) {
    if (column.HoldsTexts) {
        for (Lines& cell : column.Cells) {
            cell = AllWrapped(cell, WidestText);
        }
    }
    column.NameLines = AllWrapped(column.NameLines, std::max(WidestHeading, column.WidthOfCells()));
    column.Measure();
}

/// All columns, in a width as small as can be where they are too wide.
std::vector<DrawnColumn> Drawn(const ShownTable& table) {
    std::vector<DrawnColumn> columns = {RowNames(table)};
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        columns.push_back(ColumnAt(table, i));
    }
    ShareEndings(columns);
    std::ranges::for_each(columns, &DrawnColumn::Measure);
    if (AreTooWide(columns)) {
        WrapRowNames(columns.front());
        std::for_each(columns.begin() + 1, columns.end(), WrapColumn);
    }
    return columns;
}

/// The columns as blocks that aren't too wide.
class Blocks {
  public:
    explicit Blocks(const ShownTable& table) : Columns(Drawn(table)) {
        Begin();
        for (std::size_t i = 1; i < Columns.size();) {
            const std::size_t end = EndOfVariable(Columns, i);
            const auto together = std::span(Columns).subspan(i, end - i);
            if (!IsNew && !HasRoomFor(together) && WidthOfNames() + WidthOf(together) <= Widest) {
                Begin();
            }
            for (; i < end; ++i) {
                Put(Columns[i]);
            }
        }
    }

    std::vector<std::vector<DrawnColumn>> Made;

  private:
    void Begin() {
        Made.push_back({Columns.front()});
        for (std::size_t i = 1; Made.size() > 1 && AreRowsNamedFurther() && i < Columns.size(); ++i) {
            if (Columns[i].NamesRows()) {
                Made.back().push_back(Columns[i]);
            }
        }
        IsNew = true;
    }

    [[nodiscard]] std::size_t WidthOfNames() const {
        std::size_t width = 0;
        for (const DrawnColumn& column : Columns) {
            const bool isName = &column == &Columns.front() || (AreRowsNamedFurther() && column.NamesRows());
            width += isName ? column.Width + ColumnGap.size() : 0;
        }
        return width;
    }

    void Put(const DrawnColumn& column) {
        if (!IsNew && !HasRoomFor(std::span(&column, 1))) {
            Begin();
        }
        const bool isThere = Made.size() > 1 && AreRowsNamedFurther() && column.NamesRows();
        if (!isThere) {
            Made.back().push_back(column);
            IsNew = false;
        }
    }

    /// In a table of groups texts stand right behind the names; others are what a row has to say.
    [[nodiscard]] bool AreRowsNamedFurther() const { return Columns.size() > 1 && Columns[1].NamesRows(); }

    [[nodiscard]] bool HasRoomFor(std::span<const DrawnColumn> columns) const {
        return WidthOf(Made.back()) + WidthOf(columns) <= Widest;
    }

    std::vector<DrawnColumn> Columns;  // the row names first
    bool IsNew = true;  // the block has nothing but names yet
};

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

/// As many lines as its highest cell has.
std::string Row(const std::vector<DrawnColumn>& columns, std::size_t row) {
    std::size_t height = 1;
    for (const DrawnColumn& column : columns) {
        height = std::max(height, column.Cells[row].size());
    }
    std::string text;
    for (std::size_t i = 0; i < height; ++i) {
        text += Line(columns, [row, i](const DrawnColumn& column) {
            return i < column.Cells[row].size() ? column.Cells[row][i] : std::string();
        });
    }
    return text;
}

/// The end of the columns that share the name over one of them.
std::size_t EndOfShared(const std::vector<DrawnColumn>& columns, std::size_t column) {
    std::size_t end = column + 1;
    while (end < columns.size() && columns[end].Over == columns[column].Over) {
        ++end;
    }
    return end;
}

std::size_t SharedWidth(std::span<const DrawnColumn> columns) {
    return WidthOf(columns) - ColumnGap.size();
}

/// Columns at least as wide as the names over them.
std::vector<DrawnColumn> Widened(std::vector<DrawnColumn> columns) {
    for (std::size_t i = 0; i < columns.size();) {
        const std::size_t end = EndOfShared(columns, i);
        const std::size_t width = SharedWidth(std::span(columns).subspan(i, end - i));
        const std::size_t wanted = DisplayWidth(columns[i].Over);
        columns[end - 1].Width += wanted > width ? wanted - width : 0;
        i = end;
    }
    return columns;
}

/// The names over several columns, with a rule as far as they go; nothing without such.
std::string SharedNames(const std::vector<DrawnColumn>& columns) {
    std::string line;
    bool hasNames = false;
    for (std::size_t i = 0; i < columns.size();) {
        const std::size_t end = EndOfShared(columns, i);
        const std::size_t width = SharedWidth(std::span(columns).subspan(i, end - i));
        const std::string& name = columns[i].Over;
        const std::size_t rest = width - DisplayWidth(name);
        line += i == 0 ? "" : ColumnGap;
        line += name.empty() || rest < 2 ? name + std::string(rest, ' ') : name + ' ' + std::string(rest - 1, '-');
        hasNames = hasNames || !name.empty();
        i = end;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return hasNames ? line + '\n' : "";
}

std::string Drawing(const std::vector<DrawnColumn>& columns) {
    std::string text = SharedNames(columns);
    for (std::size_t i = 0; i < columns.front().NameLines.size(); ++i) {
        text += Line(columns, [i](const DrawnColumn& column) { return column.NameLines[i]; });
    }
    text += Line(columns, Rule);
    const std::size_t rows = columns.front().Cells.size();
    for (std::size_t row = 0; row < rows; ++row) {
        text += Row(columns, row);
    }
    return rows == 0 ? text + "(no rows)\n" : text;
}

}  // namespace

std::string TextTable(const ShownTable& table) {
    std::string text;
    for (std::vector<DrawnColumn>& block : Blocks(table).Made) {
        text += (text.empty() ? "" : "\n") + Drawing(Widened(Levelled(std::move(block))));
    }
    for (const std::string& line : table.Note.empty() ? Lines() : Wrapped(table.Note, TextWidth)) {
        text += line + '\n';
    }
    return text;
}

}  // namespace quillara
