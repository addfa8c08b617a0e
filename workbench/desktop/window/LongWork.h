#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

namespace quillara {

class WorkPanel;

/// Lets the window live while something long runs on its thread or is waited for: draws, shows how much is done and
/// a button that cancels, and drops whatever else the user does meanwhile. Works that follow one another before the
/// user's next turn are one.
class LongWork : public QObject {
    Q_OBJECT

  public:
    /// The panel is a child of the window that lives.
    explicit LongWork(WorkPanel& panel, QObject* parent = nullptr);
    ~LongWork() override;

    /// `cancel` ends the work as soon as that can be. A total of 0: how much there is isn't known.
    void Begin(const QString& text, int total, std::function<void()> cancel);
    /// Comes often; the window is drawn at most every 30 ms.
    void Advance(int done);
    void End();
    /// It is the user's turn: what begins from now on is other work.
    void Settle();
    [[nodiscard]] bool IsUnderWay() const { return Runs; }
    void Cancel();

  protected:
    /// What the user does meanwhile goes nowhere, but the panel's own button and Escape.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    WorkPanel& Panel;
    std::function<void()> OnCancel;
    QElapsedTimer Clock;  // since the first of the works began; invalid: none runs
    QElapsedTimer SinceDrawn;
    QTimer Settling;
    bool Runs = false;
    bool IsDrawing = false;
};

}  // namespace quillara
