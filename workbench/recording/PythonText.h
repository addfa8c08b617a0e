#pragma once

#include <span>
#include <string>
#include <string_view>

#include "workbench/windows/WindowCall.h"

namespace quillara {

/// A text as a literal of Python. Bytes that are no UTF-8 stand as Python has them in the names of files.
[[nodiscard]] std::string PythonText(std::string_view text);
/// Whether a text is UTF-8, so that a literal gives it back to the host.
[[nodiscard]] bool IsPlainPython(std::string_view text);
/// A comment behind a line: the text in one line, two blanks and a sign before it. Empty for an empty text.
[[nodiscard]] std::string PythonComment(std::string_view text);
/// "name, name": the arguments of a call of a window, or a call as an item of an answer.
[[nodiscard]] std::string PythonArguments(const WindowCall& call);
[[nodiscard]] std::string PythonAnswer(std::span<const WindowCall> calls);

}  // namespace quillara
