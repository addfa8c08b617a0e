#pragma once

#include <optional>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

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

/// Tells which texts a choice by content leaves out because they have too many values, if there are such.
[[nodiscard]] std::optional<Remark> RemarkOnLeftOut(const DataTable& table, const VariableChoice& choice);

}  // namespace quillara
