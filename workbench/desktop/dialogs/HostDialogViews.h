#pragma once

#include "workbench/desktop/dialogs/DialogView.h"

namespace quillara {

/// The view of a window: that of its own which a dialog of the host has, by its id (DialogIds.h), or else a DialogView.
[[nodiscard]] DialogView* MakeDialogView(Window& window, DialogView::Act act, QWidget* parent);

}  // namespace quillara
