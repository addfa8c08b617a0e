#pragma once

#include "workbench/data/DataTable.h"

namespace quillara {

/// What a variable is explored as when nobody says.
enum class DefaultRole {
    Categorical,  ///< texts and labelled values with at most 100 distinct ones, whole numbers with at most 12
    Continuous,  ///< other numbers, dates and times
    None,  ///< texts of which there are more
};

/// Over all cases, missing data left out.
[[nodiscard]] DefaultRole DefaultRoleOf(const Variable& variable);

}  // namespace quillara
