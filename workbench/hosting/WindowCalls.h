#pragma once

#include <string>
#include <variant>
#include <vector>

#include "platform/Variant.h"
#include "workbench/hosting/ScriptDesk.h"

namespace quillara {

class Window;

/// What a script does in a window as a person would, by name:
///   click ID               a button, a check box, a radio button
///   select ID ROW          a row of a list, by place from 0 or by text
///   double_click ID ROW    the same twice
///   text ID TEXT           an edit or a number field
///   drag ID ROW TARGET     the row of a list before another
///   close                  the cross of the window
/// and in a brushing graph, in an answer of one call:
///   pick BAR OPTION        a bar, from 0 (-1: none), with an option, from 0 (0: drill down, 1: drill up)
///   leave                  ends the brushing
struct WindowCall {
    std::string Name;
    std::vector<std::variant<double, std::string>> Arguments;
};

/// Does so. Throws UsageError for a call that isn't there or lacks arguments, and as Window does.
void RunWindowCall(Window& window, const WindowCall& call);

/// The arguments of a call as automation has them: numbers and texts. Throws UsageError for others.
[[nodiscard]] std::variant<double, std::string> WindowArgument(const VARIANT& value);

/// The answer that makes these calls one after the other, given as a list of lists. Throws UsageError when it is
/// another value.
[[nodiscard]] ScriptDesk::Answer AnswerOf(const VARIANT& calls);

}  // namespace quillara
