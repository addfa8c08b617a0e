#pragma once

#include <QFrame>

class QLabel;
class QProgressBar;
class QPushButton;

namespace quillara {

/// Shows over the middle of its window what runs, how much of it is done, and a button that cancels it.
class WorkPanel : public QFrame {
    Q_OBJECT

  public:
    explicit WorkPanel(QWidget* window);

    /// Says what runs; a total of 0: how much there is isn't known.
    void Show(const QString& text, int total);
    void ShowDone(int done);
    void ShowCancelled();
    /// Comes into sight in the middle of the window, if it isn't there already.
    void Rise();

  signals:
    void cancelled();

  private:
    QLabel* What;
    QProgressBar* Bar;
    QPushButton* Button;
};

}  // namespace quillara
