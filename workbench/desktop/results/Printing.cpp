#include "workbench/desktop/results/Printing.h"

#include <qcustomplot.h>

#include <QPainter>
#include <QPicture>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextDocument>

#include "workbench/charts/ChartPainter.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/exploration/TableClip.h"

namespace quillara {
namespace {

constexpr double Gap = 24.0;  // pixels between documents
constexpr double PixelsPerInch = 96.0;

/// Pages that are filled from above, in pixels of 96 to the inch.
class Pages {
  public:
    explicit Pages(QPrinter& printer) : Device(printer), Painter(&printer) {
        const double scale = printer.resolution() / PixelsPerInch;
        Painter.scale(scale, scale);
        const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
        Size = page.size() / scale;
    }

    void Add(const GraphDocument& graph);
    void Add(const SpreadsheetDocument& table);

  private:
    void Reserve(double height);

    QPrinter& Device;
    QPainter Painter;
    QSizeF Size;
    double Used = 0.0;
};

/// What follows stands whole on this page or on the next.
void Pages::Reserve(double height) {
    if (Used > 0.0 && Used + height > Size.height()) {
        Device.newPage();
        Used = 0.0;
    }
}

void Pages::Add(const GraphDocument& graph) {
    ChartLook look;
    look.Width = static_cast<int>(Size.width());
    look.Height = std::min(look.Width * 2 / 3, static_cast<int>(Size.height()));
    Reserve(look.Height);
    QCustomPlot plot;
    BuildChart(plot, graph, look);
    QPicture picture;
    PaintPlot(plot, picture, {look.Width, look.Height});
    const double unscaled = static_cast<double>(picture.logicalDpiX()) / Device.logicalDpiX();
    Painter.save();
    Painter.translate(0.0, Used);
    Painter.scale(unscaled, unscaled);  // a picture scales itself to the resolution of its device
    Painter.drawPicture(QPointF(), picture);
    Painter.restore();
    Used += look.Height + Gap;
}

/// A table that is longer than a page goes on on the next ones, and one that is wider is made smaller.
void Pages::Add(const SpreadsheetDocument& table) {
    const ShownTable words = ShowTable(table);
    QTextDocument text;
    text.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    text.documentLayout()->setPaintDevice(nullptr);
    text.setHtml(QString::fromStdString(ClipOf(words, AllOf(words)).Html));
    text.setTextWidth(Size.width());
    const double share = std::min(1.0, Size.width() / std::max(1.0, text.size().width()));
    const double height = text.size().height() * share;
    Reserve(std::min(height, Size.height()));
    for (double from = 0.0; from < height; from += Size.height()) {
        if (from > 0.0) {
            Device.newPage();
            Used = 0.0;
        }
        Painter.save();
        Painter.translate(0.0, Used - from);
        Painter.scale(share, share);
        text.drawContents(&Painter, QRectF(0.0, from / share, text.size().width(), Size.height() / share));
        Painter.restore();
    }
    Used += std::fmod(height, Size.height()) + Gap;
}

}  // namespace

void PrintDocuments(QPrinter& printer, const std::vector<CountedPointer<ResultDocument>>& documents) {
    Pages pages(printer);
    for (const CountedPointer<ResultDocument>& document : documents) {
        std::visit([&](const auto& content) { pages.Add(content); }, document->Content());
    }
}

void AskAndPrint(const std::function<void(QPrinter&)>& print, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() == QDialog::Accepted) {
        print(printer);
    }
}

void ShowPrintPreview(const std::function<void(QPrinter&)>& print, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, parent);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* pages) { print(*pages); });
    dialog.resize(900, 700);
    dialog.exec();
}

}  // namespace quillara
