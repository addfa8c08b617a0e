#pragma once

#include <optional>
#include <string_view>

namespace quillara {

/// The line of a script at which a traceback in its output says that it has failed, the innermost one of the script
/// itself; nothing when the output has none. `script` is the path by which it was run.
[[nodiscard]] std::optional<int> LineOfFault(std::string_view output, std::string_view script);

}  // namespace quillara
