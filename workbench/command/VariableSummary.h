#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// A value that has a label or a description, or the text of a text variable.
struct LabelledValue {
    double Number = 0.0;  ///< the value itself
    std::string Text;  ///< as it stands in the data
    std::string Label;
    std::string Description;
};

/// What is told about a variable.
struct VariableSummary {
    std::string Name;
    std::string Type;  ///< number, date, time or text
    std::string Label;
    std::string Format;
    std::int64_t MissingCases = 0;
    std::string Smallest;  ///< of the values that aren't missing; empty for texts, and when there is none
    std::string Largest;
    std::vector<LabelledValue> Values;  ///< ascending
};

[[nodiscard]] VariableSummary SummaryOf(const Variable& variable);

/// The variables of a table for people: an aligned table with type, label, missing cases and the first value labels.
[[nodiscard]] std::string VariablesAsText(const DataTable& table);

/// The variables as one JSON text that ends with a line feed, with all value labels and descriptions.
[[nodiscard]] std::string VariablesAsJson(const DataTable& table);

}  // namespace quillara
