#include "workbench/desktop/results/ChartResultView.h"

#include <qcustomplot.h>

#include <QHelpEvent>
#include <QPalette>
#include <QVBoxLayout>

#include "workbench/charts/ChartPainter.h"

namespace quillara {

ChartResultView::ChartResultView(ResultDocument& document, QWidget* parent)
    : DocumentView(parent), Document(CountedPointer<ResultDocument>::Share(&document)), Plot(new QCustomPlot(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Plot);
    Refresh();
}

void ChartResultView::Refresh() {
    if (const GraphDocument* graph = Document->Graph()) {
        ChartLook look;
        look.Width = std::max(width(), look.Width);
        look.Height = std::max(height(), look.Height);
        look.Dark = palette().color(QPalette::Window).lightness() < 128;
        BuildChart(*Plot, *graph, look);
        Plot->replot();
    }
}

}  // namespace quillara
