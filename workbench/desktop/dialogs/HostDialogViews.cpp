#include "workbench/desktop/dialogs/HostDialogViews.h"

#include <utility>

namespace quillara {

DialogView* MakeDialogView(Window& window, DialogView::Act act, QWidget* parent) {
    return new DialogView(window, std::move(act), parent);
}

}  // namespace quillara
