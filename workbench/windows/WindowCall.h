#pragma once

#include <string>
#include <variant>
#include <vector>

namespace quillara {

/// What a user does in a window, by name:
///   click ID               a button, a check box, a radio button
///   select ID ROW          a row of a list, by place from 0 or by text
///   double_click ID ROW    the same twice
///   text ID TEXT           an edit or a number field
///   drag ID ROW TARGET     the row of a list before another
struct WindowCall {
    std::string Name;
    std::vector<std::variant<double, std::string>> Arguments;
};

}  // namespace quillara
