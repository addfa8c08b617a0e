#pragma once

#include <string_view>

namespace quillara {

/// Writes results to standard output. Throws DataError when they can't all be written.
void WriteToStandardOutput(std::string_view text);

/// Writes a message as one line to standard error, without characters that could steer a terminal.
void WriteMessage(std::string_view text);

}  // namespace quillara
