#include "workbench/desktop/window/ScreenFit.h"

#include <QEvent>
#include <QRect>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace quillara {

/// The frame isn't known before the window is shown: room is left for one.
void KeepWithin(QWidget& window, const QRect& room) {
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const QSize most = room.size() - QSize(title / 4, title * 3 / 2);
    if (window.isMaximized() || window.size() == window.size().boundedTo(most)) {
        return;
    }
    window.resize(window.size().boundedTo(most));
    window.move(room.topLeft());
}

void KeepOnScreen(QWidget& window) {
    KeepWithin(window, window.screen()->availableGeometry());
}

bool ScreenFitter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* widget = static_cast<QWidget*>(watched);
        const Qt::WindowType type = widget->windowType();
        if (type == Qt::Window || type == Qt::Dialog) {
            KeepOnScreen(*widget);
        }
    }
    return false;
}

}  // namespace quillara
