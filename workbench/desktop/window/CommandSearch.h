#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

class QAction;
class QLineEdit;
class QListWidget;
class QMenuBar;

namespace quillara {

/// All commands of the menus in one list, which shrinks to what is typed; Enter or a click runs one.
class CommandSearch : public QDialog {
    Q_OBJECT

  public:
    explicit CommandSearch(const QMenuBar& menus, QWidget* parent);

  protected:
    /// Arrows move in the list while the cursor stays in the text.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Entry {
        QPointer<QAction> Command;
        QString Text;  ///< "Explore > Drill down"
    };

    void Collect(const QList<QAction*>& actions, const QString& path);
    void Filter(const QString& typed);
    void Run();

    std::vector<Entry> Entries;
    QLineEdit* Typed;
    QListWidget* Found;
};

}  // namespace quillara
