#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"

namespace quillara {

/// By which variable cases are put in order.
struct CaseOrder {
    std::optional<std::size_t> Variable{};  ///< its index; nothing: the order of the table
    bool IsDescending = false;

    friend bool operator==(const CaseOrder&, const CaseOrder&) = default;
};

/// Which cases of a table a grid shows and in what order. Cases of equal values stay in the order of the table, and
/// those without a value come last, whichever way the values go. All cases in their own order take no memory.
class CaseArrangement {
  public:
    CaseArrangement() = default;
    /// All cases in the order of the table.
    explicit CaseArrangement(const DataTable& table) : Cases(static_cast<std::size_t>(table.Cases)) {}

    /// Arranges those of the cases that are kept, or all when `kept` is null. `cancelled` is asked now and then from
    /// the calling thread: nothing when it says so. The table has an index for the variable of the order.
    [[nodiscard]] static std::optional<CaseArrangement> Of(const DataTable& table, const CaseOrder& order,
                                                           const RowSet* kept, const std::function<bool()>& cancelled);

    [[nodiscard]] std::size_t Count() const { return IsPlain ? Cases : Rows.size(); }
    /// The row of the table, counted from 0, that stands at a place.
    [[nodiscard]] std::size_t RowAt(std::size_t place) const { return IsPlain ? place : Rows[place]; }
    /// The place of a row of the table; nothing when it isn't shown.
    [[nodiscard]] std::optional<std::size_t> PlaceOf(std::size_t row) const;

  private:
    std::size_t Cases = 0;
    bool IsPlain = true;
    std::vector<std::uint32_t> Rows;
};

}  // namespace quillara
