#pragma once

#include <string>

#include "workbench/views/ShownTable.h"

namespace quillara {

/// The title of a table in HTML; one that has none is called "Table".
[[nodiscard]] std::string TitleOf(const ShownTable& table);

/// A table in a box with attributes of its own, in HTML. It may be wider than the page: its box scrolls, also with the
/// keyboard.
[[nodiscard]] std::string HtmlTable(const ShownTable& table, const std::string& attributes);

}  // namespace quillara
