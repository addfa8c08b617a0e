#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/DefaultChoice.h"

namespace quillara {

/// Names of variables as the user gave them, list by list.
struct VariableNames {
    std::vector<std::string> Categorical;
    std::vector<std::string> Continuous;
    std::vector<std::string> ReviewCategorical;
    std::vector<std::string> ReviewContinuous;
};

/// The names in one record of delimited text; none in an empty one. Throws UsageError when one of several is empty,
/// DataError when a quote isn't closed.
[[nodiscard]] std::vector<std::string> ParseNames(std::string_view text);

/// Throws UsageError when a name stands twice among the drill variables or twice among the review variables.
void CheckForRepeats(const VariableNames& names);

/// The variables of these names. Throws DataError for a name that isn't there.
[[nodiscard]] VariableChoice ChooseByName(const DataTable& table, const VariableNames& names);

/// Makes variables that are to be categorized continuous drill variables: those that are none yet and, unless the
/// user has named them (`areNamed`), those that are categorical by their content. Texts are left as they are. Throws
/// DataError for a name that isn't there.
void AddCategorized(const DataTable& table, const std::vector<std::string>& names, bool areNamed, VariableLists& drill);

/// Adds variables that are to be drilled on and are no drill variables yet, by their roles; texts with many values are
/// categorical. A name that isn't there is passed over.
void AddDrilled(const DataTable& table, const std::vector<std::string>& names, VariableLists& drill);

}  // namespace quillara
