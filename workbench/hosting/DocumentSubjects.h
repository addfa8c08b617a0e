#pragma once

#include <cstddef>
#include <span>

#include "workbench/documents/Subject.h"

class CAnalysisDoc;

namespace quillara {

class TableInUse;

/// What the result that has just arrived is about: what the analysis has said of it, and what the table knows of its
/// variables. What was said holds for one result only.
[[nodiscard]] Subject TakeSubject(CAnalysisDoc* document);

/// What a plot of review variables is about that the host computes, by their indexes in the table.
[[nodiscard]] Subject ReviewSubject(const TableInUse& data, std::span<const std::size_t> variables);

}  // namespace quillara
