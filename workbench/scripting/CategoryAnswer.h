#pragma once

#include <cstddef>
#include <functional>

#include "workbench/data/DataTable.h"
#include "workbench/scripting/CategoryLookup.h"

namespace quillara {

class Window;

/// Chooses the row of a category list that a step keeps. When it throws, no step is taken.
using RowChooser = std::function<std::size_t(const CategoryList&)>;

/// Answers the dialog of categories that a step on a variable opens.
void AnswerWithCategory(Window& dialog, const Variable& variable, const RowChooser& chooseRow);

}  // namespace quillara
