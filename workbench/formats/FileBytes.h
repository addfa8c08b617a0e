#pragma once

#include <cstddef>
#include <string>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// The bytes of a file, at most the first `limit` of them. Throws DataError, naming the file, when it can't be read;
/// Interrupted when the monitor's work was cancelled, also while a pipe keeps it waiting.
[[nodiscard]] std::string ReadBytes(const std::string& path, WorkMonitor& monitor,
                                    std::size_t limit = std::string::npos);

/// The name of a file without its folder.
[[nodiscard]] std::string NameOfFile(const std::string& path);

/// The extension of a file's name in small letters, without the point; empty when it has none.
[[nodiscard]] std::string ExtensionOf(const std::string& path);

}  // namespace quillara
