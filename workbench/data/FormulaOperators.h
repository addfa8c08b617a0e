#pragma once

#include <utility>
#include <vector>

#include "workbench/data/FormulaParts.h"

namespace quillara {

// Each throws UsageError when the parts can't be joined so.

/// The comparison of two parts.
[[nodiscard]] FormulaPart ComparisonOf(const FormulaContext& context, FormulaPart left, const Token& relation,
                                       FormulaPart right);

/// Whether a part is one of several, which don't vary.
[[nodiscard]] FormulaPart MembershipOf(const FormulaContext& context, FormulaPart part,
                                       const std::vector<FormulaPart>& members);

/// Whether a part lies between two others, or is one of them.
[[nodiscard]] FormulaPart BetweenOf(const FormulaContext& context, const FormulaPart& part, FormulaPart lowest,
                                    FormulaPart highest);

/// A chain of sums or products, as a + b - c: each sign with the part behind it.
[[nodiscard]] FormulaPart ChainOf(const FormulaContext& context, FormulaPart first,
                                  std::vector<std::pair<Token, FormulaPart>> further);

/// A number with a sign before it.
[[nodiscard]] FormulaPart SignedPart(const FormulaContext& context, const Token& sign, const FormulaPart& number);

/// Conditions joined by `and` or by `or`.
enum class Connective { And, Or };
[[nodiscard]] FormulaPart ConnectionOf(Connective connective, std::vector<FormulaPart> conditions);
[[nodiscard]] FormulaPart NegationOf(const FormulaPart& condition, std::size_t offset);

}  // namespace quillara
