#pragma once

namespace quillara {

/// Whether the application shows the wait cursor now.
[[nodiscard]] bool IsWaitCursorShown();

/// Calls `hear` whenever an analysis of this thread begins, restores or ends the wait cursor, with whether it shows
/// then. One hears at a time.
void HearWaitCursor(void (*hear)(bool isShown));

}  // namespace quillara
