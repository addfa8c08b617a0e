#pragma once

#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"

namespace quillara {

inline constexpr double Missing = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinity = std::numeric_limits<double>::infinity();

/// A variable of numbers; values that are Missing get its missing data code.
inline Variable Numbers(std::string name, std::vector<double> values, ValueKind kind = ValueKind::Number) {
    Variable variable;
    variable.Name = std::move(name);
    variable.Kind = kind;
    EncodeNumbers(variable, std::move(values));
    return variable;
}

inline Variable Texts(std::string name, const std::vector<std::optional<std::string>>& texts) {
    Variable variable;
    variable.Name = std::move(name);
    EncodeTexts(variable, texts);
    return variable;
}

/// A table of variables of equal length.
inline DataTable TableOf(std::vector<Variable> variables) {
    DataTable table;
    table.Cases = static_cast<std::int32_t>(variables.front().Values.size());
    table.Variables = std::move(variables);
    return table;
}

/// All cases, as plots take them.
inline RowSet AllRows(const DataTable& table) {
    return RowSet::All(static_cast<std::size_t>(table.Cases));
}

}  // namespace quillara
