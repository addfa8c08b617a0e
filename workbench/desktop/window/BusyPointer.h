#pragma once

namespace quillara {

/// Shows the pointer of an application that is busy, or the usual one, over all windows. The busy one still is an
/// arrow: what takes long can be cancelled with it.
void ShowBusyPointer(bool isBusy);

}  // namespace quillara
