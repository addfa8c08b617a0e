#pragma once

#include <cstddef>
#include <span>

#include "workbench/documents/Subject.h"

namespace quillara {

struct AnalysisState;

/// What the result that has just arrived is about: what the analysis has said of it, and what the table knows of its
/// variables. What was said holds for one result only.
[[nodiscard]] Subject TakeSubject(AnalysisState& state);

/// What a plot of review variables is about that the host computes, by their indexes in the table.
[[nodiscard]] Subject ReviewSubject(const AnalysisState& state, std::span<const std::size_t> variables);

}  // namespace quillara
