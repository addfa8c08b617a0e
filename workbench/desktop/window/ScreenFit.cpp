#include "workbench/desktop/window/ScreenFit.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace quillara {

/// The frame isn't known before the window is shown: room is left for one.
void KeepOnScreen(QWidget& window) {
    const QRect room = window.screen()->availableGeometry();
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const QSize most = room.size() - QSize(title / 4, title * 3 / 2);
    if (window.isMaximized() || window.size() == window.size().boundedTo(most)) {
        return;
    }
    window.resize(window.size().boundedTo(most));
    window.move(room.topLeft());
}

}  // namespace quillara
