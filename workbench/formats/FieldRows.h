#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Rows of fields, gathered as delimited text in UTF-8: what stands in sheets and databases is then read by the rules
/// of delimited text, and gives the table that the same fields give in a csv file.
class FieldRows {
  public:
    /// `origin` names where the fields come from, for error messages. Both must outlive the rows.
    FieldRows(const std::string& origin, WorkMonitor& monitor) : Origin(origin), Monitor(monitor) {}

    /// The next field of the row; an empty one is missing data. Throws DataError for a null byte.
    void Add(std::string_view field);
    /// The same of a number, in the shortest form that reads back as the same double. Throws DataError when it is
    /// infinite.
    void AddNumber(double number);
    /// A field of column 0, 1, ...; columns passed over are empty. Throws DataError for a column that is there already.
    void AddAt(std::size_t column, std::string_view field);
    /// Ends the row. Rows without fields count as rows of missing data where others stand before and behind them; above
    /// all others they are empty lines.
    /// Throws Interrupted, and DataError when there are too many fields for the memory.
    void EndRow();

    /// So many rows without fields.
    void PassRows(std::size_t count) { Passed += count; }

    /// How many fields the row has so far.
    [[nodiscard]] std::size_t Width() const { return Fields; }
    [[nodiscard]] std::size_t Rows() const { return Ends.size(); }
    /// The text of all rows, each with as many fields as the widest.
    [[nodiscard]] std::string Take();

  private:
    struct RowEnd {
        std::size_t Place = 0;
        std::size_t Fields = 0;
    };

    void AddPassedRows();
    void AddEnd();
    [[nodiscard]] std::string Widened() const;

    const std::string& Origin;
    WorkMonitor& Monitor;
    std::string Text;
    std::vector<RowEnd> Ends;
    std::size_t Above = 0;  // rows without fields above all others
    std::size_t Passed = 0;  // rows without fields since the last other one
    std::size_t Fields = 0;
    std::size_t Widest = 0;
    std::size_t Narrowest = static_cast<std::size_t>(-1);
};

}  // namespace quillara
