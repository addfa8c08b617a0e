#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// A run of cases for which a formula is computed.
struct FormulaBlock {
    std::size_t First = 0;  ///< from 0
    /// Whether `or` holds where one side holds and the other is missing, and `and` fails where one side fails.
    bool IsLenient = false;
};

/// A part of a formula, which has a number for every case: a value, the place of a text, or 1 and 0 of a condition that
/// holds or doesn't; NaN where it is missing. Terms don't change, and keep the columns that they read.
class FormulaTerm {
  public:
    FormulaTerm() = default;
    FormulaTerm(const FormulaTerm&) = delete;
    FormulaTerm& operator=(const FormulaTerm&) = delete;
    virtual ~FormulaTerm() = default;

    /// As many cases as `values` has room for.
    virtual void Compute(const FormulaBlock& block, std::span<double> values) const = 0;
};

using TermPointer = std::shared_ptr<const FormulaTerm>;

/// What stands for a missing value.
inline constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// Puts what is made of a block's values in their place.
using BlockChange = std::function<void(std::span<double> values)>;
/// The same of two, in place of the left ones.
using BlockJoin = void (*)(double* left, const double* right, std::size_t count);

/// How two terms become one; `Lenient` where a block is.
struct JoinRule {
    BlockJoin Strict;
    BlockJoin Lenient;
};

[[nodiscard]] TermPointer ConstantTerm(double value);
[[nodiscard]] TermPointer ColumnTerm(const Variable& variable);
/// 1 where the variable is missing, 0 elsewhere.
[[nodiscard]] TermPointer MissingTerm(const Variable& variable);
/// 1 where it is missing for one of these reasons, by their places; 0 elsewhere.
[[nodiscard]] TermPointer ReasonTerm(const Variable& variable, const std::vector<std::size_t>& places);
[[nodiscard]] TermPointer ChangedTerm(TermPointer term, BlockChange change);
/// A chain from left to right.
[[nodiscard]] TermPointer JoinedTerm(TermPointer first, std::vector<std::pair<JoinRule, TermPointer>> further);
/// `then` where the condition holds, `otherwise` where it doesn't.
[[nodiscard]] TermPointer ChoiceTerm(TermPointer condition, TermPointer then, TermPointer otherwise);

/// The change of every value by itself.
template <typename Function>
[[nodiscard]] BlockChange ChangeEach(Function function) {
    return [function](std::span<double> values) {
        for (double& value : values) {
            value = function(value);
        }
    };
}

/// The join of every pair by itself, in both kinds of blocks.
template <double (*Function)(double, double)>
void JoinEach(double* left, const double* right, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        left[i] = Function(left[i], right[i]);
    }
}
template <double (*Function)(double, double)>
constexpr JoinRule RuleOf{JoinEach<Function>, JoinEach<Function>};

/// The values of all cases.
[[nodiscard]] std::vector<double> ValuesOf(const FormulaTerm& term, std::size_t cases, bool isLenient = false);

}  // namespace quillara
