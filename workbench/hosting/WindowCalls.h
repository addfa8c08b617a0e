#pragma once

#include <string>
#include <variant>

#include "platform/Variant.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/windows/WindowCall.h"

namespace quillara {

class Window;

// Beside what a user does in a window there are calls for scripts:
//   close                  the cross of the window
//   command ID             the command of a control, also of one that can't be used
// and in a brushing graph, in an answer of one call:
//   pick BAR OPTION        a bar, from 0 (-1: none), with an option, from 0 (0: drill down, 1: drill up)
//   leave                  ends the brushing

/// Makes a call in a window. Throws UsageError for a call that isn't there or lacks arguments, and as Window does.
void RunWindowCall(Window& window, const WindowCall& call);

/// The arguments of a call as automation has them: numbers and texts. Throws UsageError for others.
[[nodiscard]] std::variant<double, std::string> WindowArgument(const VARIANT& value);

/// The answer that makes these calls one after the other, given as a list of lists. Throws UsageError when it is
/// another value.
[[nodiscard]] ScriptDesk::Answer AnswerOf(const VARIANT& calls);

}  // namespace quillara
