#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Reads a data file as ReadDataFile does, with a bar that shows the progress; `noticed` takes what is noticed, too.
[[nodiscard]] DataTable ReadDataWithProgress(const std::string& path, ReadOptions options,
                                             std::vector<Remark>& noticed);

/// Writes a data file as WriteDataFile does, in the format that its name or, of the standard output, `format` says, and
/// says on standard error what is lost. Throws also Interrupted when the user cancelled.
void SaveDataFile(const DataTable& table, const std::string& path, const std::optional<std::string>& format = {});

/// Throws UsageError when the standard output is a terminal and a format, by its extension, isn't for one. `option`
/// says what goes there.
void RequireNoTerminal(const std::string& option, const std::string& format);

/// Throws UsageError when `output` names the file that is read from: it would be lost. `option` says what gave
/// `output`, `role` what the other file is ("data").
void CheckOutputIsAnother(const std::string& option, const std::string& output, const std::string& role,
                          const std::string& input);

}  // namespace quillara
