#pragma once

#include "workbench/desktop/results/DocumentView.h"

class QVBoxLayout;

namespace quillara {

class ChartCanvas;

/// A graph, painted by the chart library.
class ChartResultView : public DocumentView {
    Q_OBJECT

  public:
    ChartResultView(ResultDocument& document, ExplorationModel& model, QWidget* parent);
    void Refresh() override;
    void SetOptions(const ViewOptions& options) override;
    void Copy() override;
    [[nodiscard]] QString FileKinds() const override;
    void Print(QPrinter& printer) override;
    QSize sizeHint() const override;

    [[nodiscard]] ChartCanvas& Canvas() { return *Plot; }
    /// Puts a widget above the chart, which takes it over.
    void PutAbove(QWidget* bar);

  protected:
    [[nodiscard]] DocumentPlace PlaceAt(QPoint point) const override;
    [[nodiscard]] DocumentPlace PlaceInFocus(QPoint& point) const override;

  private:
    [[nodiscard]] GraphDocument GraphForPeople() const;
    QVBoxLayout* Layout;
    ChartCanvas* Plot;
    QAction* WholeChart;
};

}  // namespace quillara
