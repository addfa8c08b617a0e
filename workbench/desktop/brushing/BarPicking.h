#pragma once

#include <QEventLoop>
#include <QObject>
#include <QPointer>

#include "workbench/exploration/BrushedBars.h"

class QKeyEvent;

namespace quillara {

class BrushingBar;
class ChartCanvas;
class ChartResultView;
struct BrushingRun;

/// One cycle of picking bars of a graph in its window, by mouse or keyboard. The bar above the graph stays for the next
/// cycle; who ends brushing takes it away.
class BarPicking : public QObject {
    Q_OBJECT

  public:
    /// Both outlive it, but for a window that is closed. `hasStep`: a step is selected in the list of steps, which the
    /// option to drill up undoes.
    BarPicking(BrushingRun& run, ChartResultView& view, bool hasStep);
    ~BarPicking() override;

    /// Lets the user pick, and returns when that has been done. False: the user has left.
    bool Run();
    /// Ends it without a pick.
    void Leave();
    /// The user wants to drill up while no step is selected: it has been left for that.
    [[nodiscard]] bool IsLeftForStepUp() const { return LeftForStepUp; }
    [[nodiscard]] BrushedBars& Bars() { return Choices; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Point(QPointF pixel);
    void Click(QPointF pixel);
    bool Press(int key);
    [[nodiscard]] bool IsForBars(const QObject* watched, const QKeyEvent& key) const;
    void ShowLit();
    void Take(int option);
    void End(bool isPicked);
    [[nodiscard]] std::optional<int> BarAt(QPointF pixel) const;

    BrushingRun& Picked;
    QPointer<ChartCanvas> Canvas;
    QPointer<BrushingBar> Options;
    BrushedBars Choices;
    QEventLoop Loop;
    const bool HasStep;
    bool LeftForStepUp = false;
    bool IsPicked = false;
};

}  // namespace quillara
