#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/documents/StepTaken.h"

namespace quillara {

class Exploration;

/// A place on the way from all cases to those that remain.
struct TrailPlace {
    std::string Variable;  ///< of the step that leads here; empty at the first place, which no step leads to
    std::string Condition;  ///< what the step keeps: "sex = Female"
    std::optional<SubsetSize> Left;  ///< what the steps up to here leave; nothing: not known
};

/// The way: the selected cases, then a place for each step in force in the order in which they were taken. Counts are
/// those of these steps alone, also when one before them has been undone since.
[[nodiscard]] std::vector<TrailPlace> TrailOf(Exploration& exploration);

}  // namespace quillara
