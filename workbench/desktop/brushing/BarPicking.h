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
    /// Both outlive it, but for a window that is closed. `stepUp` is for people what the option to drill up does;
    /// `isAnalysisToStepUp`: the analysis goes by a step, which it undoes itself.
    BarPicking(BrushingRun& run, ChartResultView& view, const QString& stepUp, bool isAnalysisToStepUp);
    ~BarPicking() override;

    /// Lets the user pick, and returns when that has been done. False: the user has left.
    bool Run();
    /// Ends it without a pick.
    void Leave();
    /// The user wants to drill up while the analysis goes by no step: it has been left for that.
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
    const bool IsAnalysisToStepUp;
    bool LeftForStepUp = false;
    bool IsPicked = false;
};

}  // namespace quillara
