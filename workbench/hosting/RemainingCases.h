#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "host/CaseConditions.h"
#include "workbench/data/RowSet.h"
#include "workbench/documents/StepTaken.h"

namespace quillara {

class AnalysisDocument;

/// The cases of the selection that the steps in force leave, by the filter of the analysis itself; until the next
/// step or pass. Null when the analysis doesn't tell its steps or there is no memory.
[[nodiscard]] const RowSet* RemainingCases(AnalysisDocument& document);

/// How many steps are in force; nothing when the analysis doesn't tell.
[[nodiscard]] std::optional<std::size_t> StepsInForceNow(AnalysisDocument& document);

/// The condition of the newest step in force; nothing where none is or the analysis doesn't tell.
[[nodiscard]] std::optional<CaseCondition> NewestCondition(AnalysisDocument& document);

/// The condition of the newest step on a variable, by its number from 1.
[[nodiscard]] std::optional<CaseCondition> ConditionOn(AnalysisDocument& document, int variable);

/// How much these cases are: under a weight those of a positive one, and its sum, fractions as they are. Nothing as
/// RemainingCases.
[[nodiscard]] std::optional<SubsetSize> CountRemaining(AnalysisDocument& document);

/// How much the newest step in force has dropped because its variable has no value; nothing where it keeps those cases.
[[nodiscard]] std::optional<SubsetSize> CountDroppedWithoutValue(AnalysisDocument& document);

/// As CountRemaining, of all cases of the selection, before any step.
[[nodiscard]] std::optional<SubsetSize> CountSelected(AnalysisDocument& document);

/// How much the first of these steps leaves by itself, the first two, and so on: as many as they are. They are in
/// force, in this order or another. Empty as RemainingCases is null, and when they aren't those in force.
[[nodiscard]] std::vector<SubsetSize> CountAlong(AnalysisDocument& document, std::span<const StepTaken> steps);

}  // namespace quillara
