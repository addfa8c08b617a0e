#pragma once

#include "workbench/plots/CaseColumns.h"

namespace quillara {

class TableInUse;

/// The weights of the cases as what the host computes itself takes them; empty: none are in force.
[[nodiscard]] CaseWeights WeightsInForce(const TableInUse& data);

}  // namespace quillara
