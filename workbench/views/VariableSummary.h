#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/DefaultRole.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/ValueSpread.h"
#include "workbench/documents/Remarks.h"

namespace quillara {

/// A value that has a label or a description, or the text of a text variable.
struct LabelledValue {
    double Number = 0.0;  ///< the value itself
    std::string Text;  ///< as it stands in the data
    std::string Label;
    std::string Description;
};

/// A missing value that is told from others.
struct MissingCode {
    MissingReason Reason;
    std::string Text;  ///< as it is written
    std::size_t Cases = 0;
};

/// What is told about a variable.
struct VariableSummary {
    std::string Name;
    std::string Type;  ///< number, date, time or text
    std::string Label;
    std::string Format;
    DefaultRole Role = DefaultRole::None;
    ValueSpread Spread;
    /// The five numbers of the spread for people; empty for texts, and when there is no value.
    std::vector<std::string> Quantiles;
    std::vector<LabelledValue> Values;  ///< ascending
    std::vector<MissingRange> MissingRanges;  ///< declared, of more than one number
    std::vector<MissingCode> MissingCodes;
};

[[nodiscard]] VariableSummary SummaryOf(const Variable& variable);

/// The first values with their labels and, of many, how many more there are; without any, where the values lie.
[[nodiscard]] std::string ShownValuesOf(const VariableSummary& summary);
/// "lowest to 0, 98 = Refused (2)": which missing values are declared, and how many cases have each.
[[nodiscard]] std::string ShownMissingOf(const VariableSummary& summary);

/// The variables of a table for people: an aligned table with type, role, missing cases, distinct values, a drawing of
/// the distribution, label and the first value labels or the quartiles. No line is wider than so many places of a
/// terminal (0: any): texts are cut, or label and values stand on a line of their own.
[[nodiscard]] std::string VariablesAsText(const DataTable& table, std::size_t width);

/// The variables as one JSON text that ends with a line feed, with all value labels and descriptions, and what is
/// remarked about the table, if anything.
[[nodiscard]] std::string VariablesAsJson(const DataTable& table, const std::vector<Remark>& remarks);

}  // namespace quillara
