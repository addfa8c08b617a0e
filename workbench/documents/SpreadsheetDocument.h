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
};

/// What a row is about, for programs.
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

/// A table of results as plain data. All texts are whole: no key of a long text is left in them.
struct SpreadsheetDocument {
    std::vector<std::string> Title;  ///< title lines up to the last that isn't empty
    std::string Corner;  ///< text above the row names
    std::vector<SpreadsheetColumn> Columns;
    std::vector<SpreadsheetRow> Rows;
    Subject About{};
    std::vector<MissingCount> Missing{};  ///< what the host says of missing data beside the table; empty: nothing
};

}  // namespace quillara
