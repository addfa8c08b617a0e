#pragma once

#include "workbench/data/DataTable.h"
#include "workbench/formats/TableGathering.h"

namespace quillara {

/// Gives a variable its numbers or dates and its missing code from what was gathered, and frees that piece by piece.
void AssembleNumbers(GatheredColumn& column, Variable& variable);

}  // namespace quillara
