#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/DerivedVariables.h"

namespace quillara {

/// Several categories of a variable as one: a variable to be derived, and its category that has them.
struct CategoryGroup {
    DerivedVariable Grouping;
    std::string Category;  ///< their names with bars between; the grouping's other one is "other"
};

/// The categories that a text names with bars between, as A|B; one that holds a bar stands in double quotes, a quote in
/// it twice. A text that is a category of the variable as it stands names that one alone.
[[nodiscard]] std::vector<std::string> CategoriesIn(const Variable& variable, std::string_view text);

/// The group of some categories of a variable: its labels, texts or values, and Missing for its missing data. Its name
/// is free, unless that very group stands already. Throws DataError when the variable hasn't such a category.
[[nodiscard]] CategoryGroup GroupOf(const DataTable& table, const Variable& variable,
                                    const std::vector<std::string>& categories);

}  // namespace quillara
