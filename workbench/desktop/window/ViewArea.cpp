#include "workbench/desktop/window/ViewArea.h"

#include <QScreen>
#include <QScrollBar>

namespace quillara {

ViewArea::ViewArea(QWidget* view, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setFocusProxy(view);
    setWidget(view);
    view->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

QSize ViewArea::sizeHint() const {
    const QSize whole = widget()->sizeHint();
    const bool mayScroll = whole.height() > screen()->availableSize().height() * 3 / 4;
    return mayScroll ? whole + QSize(verticalScrollBar()->sizeHint().width(), 0) : whole;
}

}  // namespace quillara
