#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <variant>

#include "workbench/data/DataTable.h"
#include "workbench/data/FormulaTokens.h"
#include "workbench/data/SelectionProgram.h"

namespace quillara {

struct ConditionPart {};

/// In place of the index of a variable that the table doesn't have. A formula that names one is read to its end like
/// any other, but never used.
constexpr std::size_t UnknownVariable = std::numeric_limits<std::size_t>::max();

struct VariablePart {
    std::size_t Variable;  ///< index in the table
};

struct QuotedPart {
    std::string Text;
};

/// What a part of a formula stands for, and where it begins. A double is a number written out.
struct FormulaPart {
    std::size_t Offset = 0;
    std::variant<ConditionPart, double, VariablePart, ArithmeticText, QuotedPart> Content;
};

/// A formula and the table it is about.
struct FormulaContext {
    const DataTable& Table;
    std::string_view Formula;
};

/// The arithmetic in brackets, behind a sign if there is one.
[[nodiscard]] std::string Enclosed(const std::string& expression, const std::string& sign = "");

/// Throws UsageError unless the part is a condition.
void RequireCondition(const FormulaContext& context, const FormulaPart& part);

/// The part as arithmetic. Throws UsageError unless it stands for a number.
[[nodiscard]] ArithmeticText NumberOf(const FormulaContext& context, const FormulaPart& part);

/// The comparison of two parts. Throws UsageError when they can't be compared so.
[[nodiscard]] SelectionStep ComparisonOf(const FormulaContext& context, FormulaPart left, const Token& relation,
                                         FormulaPart right);

}  // namespace quillara
