#pragma once

#include <cstddef>
#include <vector>

#include "host/TableColumns.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// The cases of a table as rows, the values of all variables side by side. Cases that are read in order are put into
/// rows some at a time, column by column.
class CaseRows {
  public:
    /// The table must outlive the rows, and no column of it may change meanwhile.
    explicit CaseRows(const DataTable& table);

    /// The values of a case, counted from 0, until the next one is read; as many as the table has variables.
    [[nodiscard]] const double* Row(std::size_t row) {
        if (row - First >= Count) {
            Read(row);
        }
        return Values.data() + (row - First) * Columns.size();
    }
    [[nodiscard]] std::size_t Width() const { return Columns.size(); }

  private:
    void Read(std::size_t row);

    std::vector<TableColumn> Columns;  // of the variables
    std::size_t Cases;  // of the table
    std::size_t Most;  // rows that there is room for
    std::vector<double> Values;
    std::size_t First = 0;  // rows First, First + 1, ... are in their places
    std::size_t Count = 0;
};

}  // namespace quillara
