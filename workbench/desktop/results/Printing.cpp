#include "workbench/desktop/results/Printing.h"

#include <qcustomplot.h>

#include <QPainter>
#include <QPicture>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextDocument>

#include "workbench/charts/ChartPainter.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/exploration/TableClip.h"
#include "workbench/views/HtmlText.h"

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
    void Add(const std::string& html);

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

void Pages::Add(const SpreadsheetDocument& table) {
    const ShownTable words = ShowTable(table);
    Add(ClipOf(words, AllOf(words)).Html);
}

/// What is longer than a page goes on on the next ones, and what is wider is made smaller.
void Pages::Add(const std::string& html) {
    QTextDocument text;
    text.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    text.documentLayout()->setPaintDevice(nullptr);
    text.setDefaultStyleSheet(QStringLiteral("h2, p, b, th, td { color: #000000; }"));  // also of dark windows
    text.setHtml(QString::fromStdString(html));
    text.setTextWidth(Size.width());
    const double share = std::min(1.0, Size.width() / std::max(1.0, text.size().width()));
    if (text.size().height() * share > Size.height()) {
        text.setPageSize({text.size().width(), Size.height() / share});  // no line stands on two pages
    }
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

/// What stands above a report.
std::string HeadOf(const OutputCollection& outputs) {
    std::string text = Element("h2", "", Escaped(outputs.FileName));
    for (const std::string& line : FactsOf(outputs)) {
        text += Element("p", "", Escaped(line));
    }
    return text;
}

void AddAll(Pages& pages, const OutputCollection& outputs) {
    for (const OutputEntry& entry : outputs.Entries) {
        std::visit([&](const auto& content) { pages.Add(content); }, entry.Content);
    }
}

}  // namespace

void PrintDocuments(QPrinter& printer, const OutputCollection& outputs) {
    Pages pages(printer);
    AddAll(pages, outputs);
}

void PrintReport(QPrinter& printer, const OutputCollection& outputs) {
    Pages pages(printer);
    pages.Add(HeadOf(outputs));
    AddAll(pages, outputs);
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
