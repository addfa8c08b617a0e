#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "workbench/command/DrillOptions.h"

namespace quillara {

/// One line for each option that is given and changes nothing, as another one that it needs isn't given.
[[nodiscard]] std::vector<std::string> OptionsWithoutEffect(const CLI::App& command, const DrillOptions& options);

}  // namespace quillara
