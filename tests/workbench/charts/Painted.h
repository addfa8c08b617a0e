#pragma once

#include <qcustomplot.h>

#include <QImage>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "workbench/charts/ChartPainter.h"
#include "workbench/charts/OffscreenApplication.h"

namespace quillara {

/// A chart as it was painted once.
class Painted {
  public:
    explicit Painted(const GraphDocument& document, QSize size = {900, 600}) : Size(size) {
        EnsureApplication();
        Plot = std::make_unique<QCustomPlot>();
        BuildChart(*Plot, document, {size.width(), size.height(), false});
        QImage image(size, QImage::Format_RGB32);
        PaintPlot(*Plot, image, size);
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const PlacedText& text : ChartTexts(*Plot)) {
            texts.push_back(text.Text.toStdString());
        }
        return texts;
    }

    /// What is wrong with the places of the texts.
    std::vector<std::string> Faults() const {
        const std::vector<PlacedText> texts = ChartTexts(*Plot);
        const QRectF picture = QRectF(QPointF(), QSizeF(Size)).adjusted(-0.5, -0.5, 0.5, 0.5);
        std::vector<std::string> faults;
        for (auto text = texts.begin(); text != texts.end(); ++text) {
            const std::string words = text->Text.toStdString();
            if (!picture.contains(text->Outline().boundingRect())) {
                faults.push_back(words + " leaves the picture");
            }
            const auto other =
                std::find_if(texts.begin(), text, [&](const PlacedText& one) { return Overlap(one, *text); });
            if (other != text) {
                faults.push_back(words + " overlaps " + other->Text.toStdString());
            }
            if (words.ends_with("\u2026") && text->Whole.isEmpty()) {
                faults.push_back(words + " is cut without a tip");
            }
        }
        return faults;
    }

    /// The tips of all marks, from the back to the front.
    std::vector<std::string> Tips() const {
        std::vector<std::string> tips;
        for (const ChartSpot& spot : ChartSpots(*Plot)) {
            tips.push_back(spot.Tip.toStdString());
        }
        return tips;
    }

    /// What lies in the middle of the i-th mark, as "series/point tip".
    std::string UnderMark(std::size_t i) const {
        const ChartSpot mark = ChartSpots(*Plot).at(i);
        return At(mark.Outline.boundingRect().center());
    }

    std::string At(QPointF point) const {
        const auto spot = ChartSpotAt(*Plot, point);
        return spot ? std::to_string(spot->Series) + "/" + std::to_string(spot->Point) + " " + spot->Tip.toStdString()
                    : "nothing";
    }

  private:
    QSize Size;
    std::unique_ptr<QCustomPlot> Plot;
};

}  // namespace quillara
