#pragma once

#include <QObject>

class QAction;
class QDockWidget;

namespace quillara {

/// Lets a person without a mouse reach a panel: its key goes into the panel, and puts it away when that is where the
/// person is already. Its entry in a menu shows it, and goes into it, or puts it away.
class PanelKey : public QObject {
    Q_OBJECT

  public:
    /// The panel owns it; `shown` is the entry that has the key and is checked while the panel is shown.
    PanelKey(QDockWidget& panel, QAction& shown);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] bool IsInFront() const;
    [[nodiscard]] bool IsWorkedIn() const;
    void Show(bool isShown);
    void Enter();

    QDockWidget& Panel;
    QAction& Shown;
};

}  // namespace quillara
