#pragma once

#include <QStringList>
#include <QWidget>

#include "workbench/desktop/scripts/PythonProcess.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace quillara {

/// A Python console with the package loaded: a line of input, whose names Tab completes and whose earlier lines the
/// arrow keys bring back, below what has been printed. It begins when it is first seen, in a process of its own.
class ConsoleView : public QWidget {
    Q_OBJECT

  public:
    explicit ConsoleView(QWidget* parent = nullptr);

    /// Waits for a line of input.
    [[nodiscard]] bool IsReady() const { return Ready; }
    [[nodiscard]] QString Printed() const;
    [[nodiscard]] QLineEdit& Input() { return *Line; }

  protected:
    void showEvent(QShowEvent* event) override;
    /// Tab and the arrow keys in the line of input.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* MakeInput();
    void Begin();
    void BeginAnew();
    void Enter();
    void AskNames();
    void Recall(int lines);
    void Read();
    void TakeAnswer(const QString& answer);
    void TakeNames(const QStringList& names);
    void Print(const QString& text);

    PythonProcess* Process;
    QPlainTextEdit* Text;
    QLabel* Prompt = nullptr;
    QLineEdit* Line = nullptr;
    QPushButton* Stop = nullptr;
    QByteArray Unread;
    QStringList Entered;
    qsizetype Recalled = 0;
    QString Beginning;  // that names were asked for
    bool Ready = false;
};

}  // namespace quillara
