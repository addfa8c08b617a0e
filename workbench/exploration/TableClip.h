#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/views/ShownTable.h"

namespace quillara {

/// A part of a table for other programs: the same cells for spreadsheets and texts.
struct TableClip {
    std::string Tabs;  ///< a line for each row, its cells separated by tabs
    std::string Html;  ///< a table
};

/// Rows and columns of a table by their places, ascending.
struct TablePart {
    std::vector<std::size_t> Rows;
    std::vector<std::size_t> Columns;
    bool HasTitle = false;  ///< the title of the table and its captions stand above
};

/// The whole of a table.
[[nodiscard]] TablePart AllOf(const ShownTable& table);

/// A part with the names of its rows and columns; a single cell is its text alone.
[[nodiscard]] TableClip ClipOf(const ShownTable& table, const TablePart& part);

}  // namespace quillara
