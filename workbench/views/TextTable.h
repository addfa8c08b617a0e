#pragma once

#include <cstddef>
#include <string>

#include "workbench/views/ShownTable.h"

namespace quillara {

/// How wide texts for a terminal are.
inline constexpr std::size_t TextWidth = 100;

/// The columns of a table as aligned text, without its title. Where it is too wide, long texts take several lines, and
/// the columns come as blocks one below the other, each behind the names of the rows; several columns of a variable
/// stay in one block where they can.
[[nodiscard]] std::string TextTable(const ShownTable& table);

}  // namespace quillara
