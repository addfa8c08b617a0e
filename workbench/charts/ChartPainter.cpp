#include "workbench/charts/ChartPainter.h"

#include <QImage>
#include <algorithm>
#include <optional>

#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/ChartTitle.h"

namespace quillara {
namespace {

constexpr int Rim = 10;  // pixels around everything

std::vector<ChartPart*> PartsOf(const QCustomPlot& plot) {
    std::vector<ChartPart*> parts;
    for (QCPLayoutElement* element : plot.plotLayout()->elements(true)) {
        if (auto* part = dynamic_cast<ChartPart*>(element)) {
            parts.push_back(part);
        }
    }
    return parts;
}

/// Draws the texts of all parts above everything else.
class TextsItem : public QCPAbstractItem {
  public:
    explicit TextsItem(QCustomPlot* plot) : QCPAbstractItem(plot) {
        setClipToAxisRect(false);
        setSelectable(false);
        setLayer(QStringLiteral("legend"));
    }
    double selectTest(const QPointF&, bool, QVariant*) const override { return -1.0; }

  protected:
    void draw(QCPPainter* painter) override {
        painter->setRenderHint(QPainter::TextAntialiasing, true);
        for (const PlacedText& text : ChartTexts(*parentPlot())) {
            DrawText(*painter, text);
        }
    }
};

void Clear(QCustomPlot& plot) {
    plot.clearItems();
    plot.clearPlottables();
    plot.plotLayout()->clear();
    plot.plotLayout()->setAutoMargins(QCP::msNone);
    plot.plotLayout()->setMargins(QMargins(Rim, Rim, Rim, Rim));
    plot.plotLayout()->setRowSpacing(0);
    plot.setAutoAddPlottableToLegend(false);
}

ChartSpot SpotOf(const ChartMark& mark) {
    return {.Series = mark.Series,
            .Point = mark.Point,
            .Categories = mark.Categories,
            .Tip = mark.Tip,
            .Outline = mark.Outline};
}

}  // namespace

void BuildChart(QCustomPlot& plot, const GraphDocument& document, const ChartLook& look) {
    Clear(plot);
    const ChartSheet sheet{&plot, std::make_shared<const GraphDocument>(document), StyleOf(look)};
    plot.setBackground(QBrush(sheet.Style.Background));
    plot.plotLayout()->addElement(0, 0, new ChartTitle(&plot, sheet.Style, document.Title));
    const ChartBody body =
        std::visit([&sheet](const auto& content) { return BodyOf(sheet, content); }, sheet.Document->Content);
    plot.plotLayout()->addElement(1, 0, body.Plot);
    if (body.Key != nullptr) {
        plot.plotLayout()->addElement(2, 0, body.Key);
    }
    new TextsItem(&plot);  // owned by the plot
}

void BeginSlide(QCustomPlot& plot, const std::vector<ChartSpot>& from) {
    std::vector<FaceStart> starts;
    std::ranges::transform(from, std::back_inserter(starts), [](const ChartSpot& spot) {
        return FaceStart{spot.Series, spot.Point, spot.Outline};
    });
    for (ChartPart* part : PartsOf(plot)) {
        part->Slide(starts, 0.0);
    }
}

void SlideTo(QCustomPlot& plot, double share) {
    for (ChartPart* part : PartsOf(plot)) {
        part->SlideOn(share);
    }
}

void PaintPlot(QCustomPlot& plot, QPaintDevice& device, QSize size) {
    QCPPainter painter(&device);
    painter.setMode(QCPPainter::pmVectorized, device.devType() != QInternal::Image);
    plot.toPainter(&painter, size.width(), size.height());
}

std::optional<ChartSpot> ChartSpotAt(const QCustomPlot& plot, QPointF point) {
    const std::vector<ChartSpot> spots = ChartSpots(plot);
    const auto topmost = std::find_if(spots.rbegin(), spots.rend(), [point](const ChartSpot& spot) {
        return spot.Outline.containsPoint(point, Qt::OddEvenFill);
    });
    return topmost == spots.rend() ? std::nullopt : std::optional(*topmost);
}

std::vector<ChartSpot> ChartSpots(const QCustomPlot& plot) {
    std::vector<ChartSpot> spots;
    for (const ChartPart* part : PartsOf(plot)) {
        std::ranges::transform(part->Marks(), std::back_inserter(spots), SpotOf);
        for (const PlacedText& text : part->Texts()) {
            if (!text.Whole.isEmpty()) {
                spots.push_back({.Tip = text.Whole, .Outline = text.Outline()});
            }
        }
    }
    return spots;
}

std::vector<PlacedText> ChartTexts(const QCustomPlot& plot) {
    std::vector<PlacedText> texts;
    for (const ChartPart* part : PartsOf(plot)) {
        texts.insert(texts.end(), part->Texts().begin(), part->Texts().end());
    }
    return texts;
}

}  // namespace quillara
