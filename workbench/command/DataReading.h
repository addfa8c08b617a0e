#pragma once

#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Reads a data file as ReadDataFile does, with a bar that shows the progress.
[[nodiscard]] DataTable ReadDataWithProgress(const std::string& path, ReadOptions options);

/// Writes a data file as WriteDataFile does, and says on standard error what is lost. Throws also Interrupted when the
/// user cancelled.
void SaveDataFile(const DataTable& table, const std::string& path);

/// Throws UsageError when `output` names the file that is read from: it would be lost. `option` says what gave
/// `output`, `role` what the other file is ("data").
void CheckOutputIsAnother(const std::string& option, const std::string& output, const std::string& role,
                          const std::string& input);

}  // namespace quillara
