#pragma once

#include <QString>

#include "workbench/exploration/ExplorationHistory.h"

namespace quillara {

/// What leads from a state to the next, for people: "Drill down: sex = Female".
[[nodiscard]] QString ChangeText(const ExplorationHistory::Change& change);
/// A state for people: its steps, or that it has all cases.
[[nodiscard]] QString StateText(const ExplorationHistory::State& state);

}  // namespace quillara
