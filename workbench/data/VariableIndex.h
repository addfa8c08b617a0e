#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "workbench/data/DataTable.h"

namespace quillara {

/// The variables of a table by name, where many are looked up: DataTable looks through all of them each time. Stands as
/// long as the table keeps its variables and their names.
class VariableIndex {
  public:
    explicit VariableIndex(const DataTable& table);

    /// As DataTable::IndexOf.
    [[nodiscard]] std::size_t IndexOf(std::string_view name) const;

  private:
    const DataTable& Table;
    std::unordered_map<std::string_view, std::size_t> Places;
};

}  // namespace quillara
