#pragma once

#include <string>
#include <vector>

#include "workbench/command/DialogSession.h"
#include "workbench/command/DrillOptions.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// The data of a drill, with the texts of its dictionary and its derived variables; `notices` takes what is noticed
/// meanwhile. Throws as ReadDataWithProgress and PrepareTable do.
[[nodiscard]] DataTable OpenData(const DrillOptions& options, std::vector<Remark>& notices);

/// Selection and weight. Throws DataError for a variable that isn't there or can't be the weight, UsageError for a
/// formula that can't be read.
[[nodiscard]] CaseSettings SettingsFor(const DataTable& table, const DrillOptions& options);

/// What is in force for all results, for people.
[[nodiscard]] std::vector<std::string> SettingTexts(const DrillOptions& options);

}  // namespace quillara
