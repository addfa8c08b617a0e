#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "workbench/documents/Subject.h"

namespace quillara {

/// A cell of a spreadsheet: empty, a number, or a text.
using SpreadsheetCell = std::variant<std::monostate, double, std::string>;

struct SpreadsheetColumn {
    std::string Name;  ///< may hold line feeds
    bool Whole = false;  ///< all numbers of the column are whole and shown so
    /// Of a table with several variables side by side: whose numbers it holds, what they are (the name without the
    /// variable's), and how they are written where they are values of it.
    std::string Variable{};
    std::string Statistic{};
    ValueKind Kind = ValueKind::Number;
    std::string Category{};  ///< of that variable, which alone its numbers are of; empty: of all of it
    bool IsCrossed = false;  ///< it crosses the rows: a number is of the row's variable by this one
    bool HoldsWords = false;  ///< texts that name the rows further or describe them, and are no values
};

/// What a row, or a number, is about, for programs.
struct RowSubject {
    std::string Variable;
    std::string Category{};  ///< of that variable; empty: the row is about all of it
};

struct SpreadsheetRow {
    std::string Name;
    std::vector<SpreadsheetCell> Cells;  ///< one per column
    bool IsMissing = false;  ///< it stands for missing data
    std::string Whole{};  ///< the name for people, where it is another
    std::optional<RowSubject> About{};  ///< nothing: as the name and the document's subject say

    [[nodiscard]] const std::string& NameForPeople() const { return Whole.empty() ? Name : Whole; }
};

/// How many cases of a frequency table lack a value for one reason.
struct MissingCount {
    std::string Code;  ///< the missing value as it is written; empty: none
    std::string Label;  ///< of the value, or what it is without one; may be empty
    double Count = 0.0;  ///< as the table counts, weighted or not

    [[nodiscard]] const std::string& Name() const { return Label.empty() ? Code : Label; }
};

/// A number that a table for people has in its texts.
struct StatedNumber {
    RowSubject About;
    std::string Statistic;
    double Value = 0.0;
};

/// A table of results as plain data. All texts are whole: no key of a long text is left in them.
struct SpreadsheetDocument {
    std::vector<std::string> Title;  ///< title lines up to the last that isn't empty
    std::string Corner;  ///< text above the row names
    std::vector<SpreadsheetColumn> Columns;
    std::vector<SpreadsheetRow> Rows;
    Subject About{};
    std::vector<MissingCount> Missing{};  ///< what the host says of missing data beside the table; empty: nothing
    std::vector<StatedNumber> Stated{};  ///< for programs, behind the numbers of the cells
};

}  // namespace quillara
