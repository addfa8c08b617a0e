#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// Writes results to standard output. Throws DataError when they can't all be written.
void WriteToStandardOutput(std::string_view text);

/// Writes a message as one line to standard error.
void WriteMessage(std::string_view text);

/// A text on one line: a line break or another control character becomes a blank, unless one stands before it.
[[nodiscard]] std::string OnOneLine(std::string_view text);

}  // namespace quillara
