#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace quillara {

/// How many of the program's arguments are its own: with `run` all up to the script, else all. What stands behind them
/// is the script's, whatever it looks like.
[[nodiscard]] std::size_t OwnArguments(std::span<char* const> arguments);

/// Adds `quillara run`. `call` is the whole call of the program, for reports; `forScript` is what stands behind the
/// script.
void AddRunCommand(CLI::App& program, const std::string& call, const std::vector<std::string>& forScript);

}  // namespace quillara
