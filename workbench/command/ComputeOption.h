#pragma once

#include <vector>

#include "workbench/command/CommandLine.h"
#include "workbench/data/DerivedVariables.h"
#include "workbench/data/ValidCodes.h"

namespace quillara {

/// What --help says of formulas.
[[nodiscard]] std::string FormulaNotes();

/// Adds --valid to a command.
CLI::Option* AddValidOption(CLI::App& command, std::vector<ValidCodes>& valid);

/// Adds --compute to a command.
CLI::Option* AddComputeOption(CLI::App& command, std::vector<DerivedVariable>& derived);

}  // namespace quillara
