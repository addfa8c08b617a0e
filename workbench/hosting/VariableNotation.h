#pragma once

#include <string>
#include <string_view>

#include "workbench/data/DataTable.h"
#include "workbench/hosting/VariablesChosen.h"

namespace quillara {

// How scripts write two lists of variables: `sex education | age`, `1-3 7 | "marital status"`. A bar separates the
// lists; blanks, commas and semicolons separate entries; an entry is a number, a range of numbers, or a name, in double
// quotes (a quote inside doubled) where it holds such signs or looks like a number.

/// Two lists in this notation, without a bar when the second is empty; nothing for none. A variable that isn't the
/// first of its name goes by its number.
[[nodiscard]] std::string TextOfLists(const DataTable& table, const TwoLists& lists);

/// What a text in this notation says. Throws UsageError for what isn't there: a variable, a third list, a closing
/// quote.
[[nodiscard]] TwoLists ListsIn(const DataTable& table, std::string_view text);

/// Throws UsageError when a variable stands twice in both lists together.
void CheckForRepeats(const DataTable& table, const TwoLists& lists);

}  // namespace quillara
