#pragma once

#include <string>
#include <vector>

#include "workbench/data/FormulaParts.h"

namespace quillara {

/// Whether a value has texts or labels that a quoted text can be compared with.
[[nodiscard]] bool HasLabels(const FormulaPart& part);

/// The values that bear the quoted text as their label or text, whether or not a case has them, in rising order. When
/// none does, those that bear it in letters of another case; that is noticed, and that none does.
[[nodiscard]] std::vector<double> BearersOf(const FormulaContext& context, const FormulaPart& part,
                                            const FormulaPart& quoted);

/// A quoted text as a value; texts stay.
[[nodiscard]] FormulaPart AsText(const FormulaPart& part);

/// Numbers the texts of two parts alike.
void NumberAlike(FormulaPart& left, FormulaPart& right);

/// The part with `change` made of each of its texts.
[[nodiscard]] FormulaPart WithTexts(const FormulaPart& part, std::string (*change)(std::string_view text));

}  // namespace quillara
