#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// The first bytes of a file, at most `limit` of them. Throws DataError, naming the file, when it can't be read, and
/// when they take more memory than they may; Interrupted when the monitor's work was cancelled, also while a pipe keeps
/// it waiting.
[[nodiscard]] std::string ReadBytes(const std::string& path, WorkMonitor& monitor, std::size_t limit);

/// How many bytes at a file's beginning tell whether the rest is worth reading.
inline constexpr std::size_t BeginningLength = std::size_t{64} * 1024;

/// Gets the beginning of a file, or the whole of a shorter one, and throws when it isn't to be read on.
using BeginningCheck = std::function<void(std::string_view beginning)>;

/// All bytes of a file, once `check` lets its beginning pass. Throws as above.
[[nodiscard]] std::string ReadBytes(const std::string& path, WorkMonitor& monitor, const BeginningCheck& check);

/// The name of a file without its folder.
[[nodiscard]] std::string NameOfFile(const std::string& path);

/// The extension of a file's name in small letters, without the point; empty when it has none.
[[nodiscard]] std::string ExtensionOf(const std::string& path);

}  // namespace quillara
