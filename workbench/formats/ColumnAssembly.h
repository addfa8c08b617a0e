#pragma once

#include <optional>
#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/FieldRules.h"
#include "workbench/formats/TableGathering.h"

namespace quillara {

/// The kind that a variable is to be read as in place of the one that it was gathered as; nothing: it is of that kind.
/// Fields that are all numbers make numbers, such that are all dates make dates.
[[nodiscard]] std::optional<FieldKind> KindInPlaceOf(const GatheredColumn& column, const FieldRules& rules);

/// The first number of a variable that is too large for a double.
[[nodiscard]] std::optional<ColumnGatherer::TooLarge> FirstTooLarge(const GatheredColumn& column);

/// Gives a variable its kind, values, texts and missing code from what was gathered, and frees that piece by piece.
void Assemble(GatheredColumn column, const FieldRules& rules, Variable& variable);

}  // namespace quillara
