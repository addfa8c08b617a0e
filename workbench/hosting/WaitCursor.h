#pragma once

namespace quillara {

/// Whether the application shows the wait cursor now.
[[nodiscard]] bool IsWaitCursorShown();

}  // namespace quillara
