#pragma once

#include <vector>

#include "workbench/command/CommandLine.h"
#include "workbench/data/DerivedVariables.h"

namespace quillara {

/// What --help says of formulas.
[[nodiscard]] std::string FormulaNotes();

/// Adds --compute to a command.
CLI::Option* AddComputeOption(CLI::App& command, std::vector<DerivedVariable>& derived);

}  // namespace quillara
