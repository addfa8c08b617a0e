#pragma once

#include <cstddef>
#include <string_view>

namespace quillara {

/// Writes results to standard output. Throws DataError when they can't all be written.
void WriteToStandardOutput(std::string_view text);

/// How many places a line of standard output has: those of the terminal, or what the environment says (COLUMNS); 0
/// where nothing limits them.
[[nodiscard]] std::size_t TerminalWidth();

/// Whether standard output is a terminal.
[[nodiscard]] bool IsTerminal();

/// Writes a message as one line to standard error, without characters that could steer a terminal.
void WriteMessage(std::string_view text);

}  // namespace quillara
