#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"

/// The values of a variable as categories of a frame: those that have labels and those that cases have, in the order of
/// the values.
struct ValueCategories {
    std::vector<std::string> Names;  ///< each another one
    std::vector<std::int32_t> Places;  ///< one per case, from 0; -1: missing data
};

/// The values that have labels, in their order, with the label; a text without one has itself. Missing data has none.
[[nodiscard]] std::vector<std::pair<double, std::string>> LabelledValues(const quillara::Variable& variable);

/// Whether a value stands for missing data.
[[nodiscard]] bool IsGap(const quillara::Variable& variable, double value);

/// A number with all digits that tell it from others.
[[nodiscard]] std::string ExactText(double value);

/// Whether frames get categories of a variable: numbers with labels, and texts with labels of their own. Dates and
/// times stay what they are.
[[nodiscard]] bool IsCategorical(const quillara::Variable& variable);

/// A value goes by its label, one without by its number; what would be called alike has its number behind it.
[[nodiscard]] ValueCategories CategoriesOf(const quillara::Variable& variable);
