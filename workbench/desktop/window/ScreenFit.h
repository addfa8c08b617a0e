#pragma once

#include <QObject>

class QRect;
class QWidget;

namespace quillara {

/// Makes a window as small as its screen and puts it there, if it is larger.
void KeepOnScreen(QWidget& window);
/// The same for any part of a screen.
void KeepWithin(QWidget& window, const QRect& room);

/// Keeps every window of the application on its screen from the moment that it is shown.
class ScreenFitter : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace quillara
