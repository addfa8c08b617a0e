#pragma once

#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Numbers of variables, from 1.
struct VariableLists {
    std::vector<short> Categorical;
    std::vector<short> Continuous;

    [[nodiscard]] std::size_t Count() const { return Categorical.size() + Continuous.size(); }
};

struct VariableChoice {
    VariableLists Drill;
    VariableLists Review;
};

/// The drill variables when the user names none, in the order of the file, by their roles (DefaultRole.h).
[[nodiscard]] VariableChoice ChooseByContent(const DataTable& table);

}  // namespace quillara
