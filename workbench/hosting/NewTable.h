#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"

namespace quillara {

/// What a new data table is to be.
struct NewTableRequest {
    std::string FileName;
    std::string Header;
    std::span<const short> Sources;  ///< numbers of the input variables that its columns come from, at least one; a
                                     ///< column from none (0) is read and dropped
    std::size_t CaseNameWidth = 0;  ///< bytes of a case name in a row; 0: no case names
    std::int32_t Cases = 0;  ///< about as many are to come
};

/// A data table that is being written as a stream of rows: the case name, then the value of each column as a double,
/// all without gaps. Its dictionary is that of the input variables, so that values keep their meaning, and its columns
/// are kept in as narrow a form as theirs.
class NewTable {
  public:
    /// Copies what it needs of the input table. Throws std::bad_alloc.
    NewTable(const DataTable& input, const NewTableRequest& request);

    /// Takes the bytes of the stream at a position, counted modulo 2^32. False, and nothing taken, when they aren't the
    /// next ones. False without memory for them too, and then for all that follow: the table ends with the last row
    /// that is whole.
    [[nodiscard]] bool Write(std::span<const char> bytes, std::uint32_t position) noexcept;

    /// The table of the rows that are whole; nothing can be written any more. Its missing data has the reasons that it
    /// has in the input table, where the rows come from some of these cases, in their order; `cases` null: none.
    [[nodiscard]] std::shared_ptr<const DataTable> Finish(const DataTable& input, const RowSet* cases);

  private:
    void AddColumn(const DataTable& input, int number, std::size_t cases);
    void TakeBytes(std::span<const char> bytes);
    void TakeRow();
    void TakeReasons(const DataTable& input, const RowSet& cases);

    std::shared_ptr<DataTable> Table;
    std::vector<ColumnBuilder> Values;  // one per variable
    std::vector<std::size_t> Sources;  // of each variable, its index in the input table
    std::vector<std::optional<std::size_t>> Columns;  // index of the variable that a column becomes; nothing: dropped
    std::size_t NameWidth;
    std::vector<char> Row;  // the row that is coming in
    std::size_t RowFilled = 0;
    std::uint32_t NextPosition = 0;
    bool IsEnded = false;
};

}  // namespace quillara
