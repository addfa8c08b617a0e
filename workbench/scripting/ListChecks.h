#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/hosting/VariablesChosen.h"

namespace quillara {

/// Throws DataError for a text among the continuous variables, the second list, and for one among the categorical ones
/// with more different texts than an analysis takes as categories: it would cut their numbers into intervals.
/// `categorical` says where texts belong, as "in --categorical".
void CheckTexts(const DataTable& table, const TwoLists& lists, const std::string& categorical);

}  // namespace quillara
