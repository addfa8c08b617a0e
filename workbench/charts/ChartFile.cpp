#include "workbench/charts/ChartFile.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "workbench/charts/ChartPainter.h"
#include "workbench/charts/OffscreenApplication.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr int PixelsPerInch = 96;
constexpr double InchesPerMetre = 39.37;
constexpr int LargestSide = 20000;
constexpr int LeastSide = 120;
constexpr std::size_t MostTips = 3000;  // of an SVG file; more would be most of its size

/// A plot and the size at which it is painted.
struct Picture {
    QCustomPlot& Plot;
    QSize Size;
    QString Title;
};

void WritePng(const Picture& picture, QBuffer& buffer) {
    QImage image(picture.Size, QImage::Format_RGB32);
    if (image.isNull()) {
        throw DataError("The picture is too large; choose a smaller size.");
    }
    image.setDotsPerMeterX(qRound(PixelsPerInch * InchesPerMetre));
    image.setDotsPerMeterY(qRound(PixelsPerInch * InchesPerMetre));
    PaintPlot(picture.Plot, image, picture.Size);
    constexpr int compact = 30;  // the smallest file takes three times as long and is one per cent smaller
    image.save(&buffer, "PNG", compact);
}

void WritePdf(const Picture& picture, QBuffer& buffer) {
    QPdfWriter writer(&buffer);
    const QSizeF inches = QSizeF(picture.Size) / PixelsPerInch;
    writer.setResolution(PixelsPerInch);
    writer.setPageMargins(QMarginsF());
    writer.setPageSize(QPageSize(inches, QPageSize::Inch, QString(), QPageSize::ExactMatch));
    writer.setTitle(picture.Title);
    writer.setCreator(QStringLiteral("Quillara"));
    PaintPlot(picture.Plot, writer, picture.Size);
}

/// Invisible outlines above everything that bear the tips.
QString TipOutlines(const QCustomPlot& plot) {
    const std::vector<ChartSpot> spots = ChartSpots(plot);
    if (spots.size() > MostTips) {
        return {};
    }
    QString text;
    for (const ChartSpot& spot : spots) {
        text += QStringLiteral("<polygon fill=\"none\" pointer-events=\"all\" points=\"");
        for (const QPointF& corner : spot.Outline) {
            text += QString::number(corner.x(), 'f', 1) + u',' + QString::number(corner.y(), 'f', 1) + u' ';
        }
        text += QStringLiteral("\"><title>") + spot.Tip.toHtmlEscaped() + QStringLiteral("</title></polygon>\n");
    }
    return text;
}

/// Where the font is missing, others of the same widths stand in.
void NameOtherFonts(QByteArray& svg) {
    svg.replace("font-family=\"DejaVu Sans\"", "font-family=\"DejaVu Sans, Verdana, sans-serif\"");
}

void WriteSvg(const Picture& picture, QBuffer& buffer) {
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(PixelsPerInch);
    generator.setSize(picture.Size);
    generator.setViewBox(QRect(QPoint(), picture.Size));
    generator.setTitle(picture.Title.toHtmlEscaped());
    PaintPlot(picture.Plot, generator, picture.Size);
    QByteArray& svg = buffer.buffer();
    NameOtherFonts(svg);
    svg.insert(svg.lastIndexOf("</svg>"), TipOutlines(picture.Plot).toUtf8());
}

void Write(const Picture& picture, ChartFormat format, QBuffer& buffer) {
    switch (format) {
        case ChartFormat::Svg:
            return WriteSvg(picture, buffer);
        case ChartFormat::Png:
            return WritePng(picture, buffer);
        case ChartFormat::Pdf:
            return WritePdf(picture, buffer);
    }
}

}  // namespace

std::string PaintedChart(const GraphDocument& document, const ChartLook& look, ChartFormat format) {
    if (look.Width < LeastSide || look.Height < LeastSide || look.Width > LargestSide || look.Height > LargestSide) {
        throw DataError("A picture has from 120 to 20000 pixels on each side; choose another size.");
    }
    EnsureApplication();
    QCustomPlot plot;
    BuildChart(plot, document, look);
    const QString title = document.Title.empty() ? QString() : Shown(document.Title.front());
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Write({plot, {look.Width, look.Height}, title}, format, buffer);
    return buffer.buffer().toStdString();
}

}  // namespace quillara
