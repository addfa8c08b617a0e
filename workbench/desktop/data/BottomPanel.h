#pragma once

#include <QString>

class QDockWidget;
class QMainWindow;
class QMenu;
class QWidget;

namespace quillara {

/// Adds a panel below the middle of a window, closed at first and behind those that are there, and an entry of a menu
/// that shows and hides it. `name` is that of the panel among the window's widgets, `shortcut` a key sequence.
QDockWidget* AddBottomPanel(QMainWindow& window, QMenu& menu, const QString& name, const QString& title,
                            const QString& shortcut, QWidget* content);

}  // namespace quillara
