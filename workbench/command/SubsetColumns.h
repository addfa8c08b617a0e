#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/command/NamedVariables.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Which variables the saved cases keep.
struct SavedVariables {
    std::vector<std::string> Names;  ///< in their order, unless it is all
    bool AreAll = false;
};

/// NAMES, or `all`; a variable of this name stands in quotes. Throws UsageError when none or one twice is named.
[[nodiscard]] SavedVariables ParseSavedVariables(std::string_view text);

/// The numbers of the columns that the subset of a drill gets: those named and behind them the weight in force or, when
/// none are named, all variables of the drill and the weight in the order of the file. Throws DataError for a name that
/// isn't there.
[[nodiscard]] std::vector<short> SubsetColumns(const DataTable& table, const std::optional<SavedVariables>& named,
                                               const VariableChoice& drill, std::optional<std::size_t> weight);

/// A subset with these columns of the table, which it has, in this order; the weight in force is declared.
[[nodiscard]] std::shared_ptr<const DataTable> Arranged(std::shared_ptr<const DataTable> subset, const DataTable& table,
                                                        const std::vector<short>& columns,
                                                        std::optional<std::size_t> weight);

}  // namespace quillara
