#include "workbench/desktop/results/ChartResultView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QVBoxLayout>

#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/Printing.h"
#include "workbench/desktop/results/ResultTitles.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/ExploredOutputs.h"

namespace quillara {
namespace {

constexpr int PixelsOfCopy = 2;  // of the picture for one on the screen

DocumentPlace PlaceOf(const ChartSpot& spot) {
    return {.Series = spot.Series, .Point = spot.Categories > 1 ? -1 : spot.Point};
}

}  // namespace

ChartResultView::ChartResultView(ResultDocument& document, ExplorationModel& model, QWidget* parent)
    : DocumentView(document, model, parent),
      Layout(new QVBoxLayout(this)),
      Plot(new ChartCanvas(this)),
      WholeChart(AddAction(tr("&Whole chart"), QKeySequence(Qt::CTRL | Qt::Key_0), [this] { Plot->ShowAll(); })) {
    Layout->setContentsMargins(0, 0, 0, 0);
    Layout->setSpacing(0);
    Layout->addWidget(Plot, 1);
    setFocusProxy(Plot);
    connect(Plot, &ChartCanvas::zoomed, this, [this] { WholeChart->setEnabled(Plot->IsZoomed()); });
    Refresh();
}

void ChartResultView::Refresh() {
    if (Shown().Graph() != nullptr) {
        Plot->Show(GraphForPeople());
        setAccessibleName(TitleOf(Shown()));
        Plot->setAccessibleName(accessibleName());
    }
}

/// Of an exploration that has ended as it was made.
GraphDocument ChartResultView::GraphForPeople() const {
    Exploration* exploration = Model().Present();
    return exploration == nullptr ? *Shown().Graph() : quillara::GraphForPeople(*exploration, Shown());
}

void ChartResultView::SetOptions(const ViewOptions& options) {
    Plot->SetMotion(options.HasMotion);
}

void ChartResultView::PutAbove(QWidget* bar) {
    Layout->insertWidget(0, bar);
}

/// In light colours whatever the screen shows: it goes into a text or a slide.
void ChartResultView::Copy() {
    const GraphDocument graph = GraphForPeople();
    const ChartLook look{.Width = std::max(Plot->width(), 160), .Height = std::max(Plot->height(), 120)};
    QCustomPlot plot;
    BuildChart(plot, graph, look);
    auto* data = new QMimeData;
    data->setImageData(plot.toPixmap(look.Width, look.Height, PixelsOfCopy).toImage());
    data->setData(QStringLiteral("image/svg+xml"),
                  QByteArray::fromStdString(PaintedChart(graph, look, ChartFormat::Svg)));
    QGuiApplication::clipboard()->setMimeData(data);
}

QString ChartResultView::FileKinds() const {
    return tr(
        "Vector picture (*.svg);;Picture (*.png);;Portable document (*.pdf);;Its numbers (*.csv);;"
        "Its numbers as a workbook (*.xlsx)");
}

void ChartResultView::Print(QPrinter& printer) {
    PrintDocuments(printer, OutputsForPeople(Model().Present(), {CountedPointer<ResultDocument>::Share(&Shown())}));
}

QSize ChartResultView::sizeHint() const {
    return {560, 400};
}

DocumentPlace ChartResultView::PlaceAt(QPoint point) const {
    const std::optional<ChartSpot> spot = ChartSpotAt(*Plot, QPointF(Plot->mapFrom(this, point)));
    return spot ? PlaceOf(*spot) : DocumentPlace();
}

DocumentPlace ChartResultView::PlaceInFocus(QPoint& point) const {
    const std::optional<ChartSpot>& current = Plot->Current();
    point = Plot->mapTo(this, current ? current->Outline.boundingRect().center().toPoint() : Plot->rect().center());
    return current ? PlaceOf(*current) : DocumentPlace();
}

}  // namespace quillara
