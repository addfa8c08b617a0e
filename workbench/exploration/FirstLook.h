#pragma once

#include <cstddef>

namespace quillara {

class Exploration;

/// What a new user's first click does: makes every variable a drill variable that is explored as one by its content,
/// keeps results up to date from now on, and shows a histogram of each variable where these aren't too many for a
/// screen. Texts of too many values are remarked on as left out. Gives how many variables are taken; 0, and nothing
/// else is done, when the table has none.
std::size_t ExploreAll(Exploration& exploration);

}  // namespace quillara
