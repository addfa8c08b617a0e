#include "workbench/desktop/window/BusyPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace quillara {

void ShowBusyPointer(bool isBusy) {
    if (isBusy == (QGuiApplication::overrideCursor() != nullptr)) {
        return;
    }
    if (isBusy) {
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

}  // namespace quillara
