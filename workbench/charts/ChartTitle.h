#pragma once

#include <string>
#include <vector>

#include "workbench/charts/ChartPart.h"

namespace quillara {

/// Heading and caption of a chart, at the top of the picture. Every line of the caption is shown: long ones wrap, many
/// ones stand beside each other, and only a caption that would leave no room for the plot is cut, with its whole text
/// in the tip.
class ChartTitle : public ChartElement {
  public:
    /// The lines as the document holds them.
    ChartTitle(QCustomPlot* plot, ChartStyle style, const std::vector<std::string>& title);
    [[nodiscard]] QSize minimumOuterSizeHint() const override;
    [[nodiscard]] QSize maximumOuterSizeHint() const override;

  protected:
    void Arrange(const QRectF& place) override;

  private:
    QString HeadingLine;
    QStringList CaptionLines;
};

/// The lines of a title below each other, in a place that begins at (0, 0).
struct TitleLayout {
    std::vector<PlacedText> Texts;
    double Height = 0.0;
};
/// `picture` is the size of the whole picture without its rim.
[[nodiscard]] TitleLayout LayOutTitle(const QString& heading, const QStringList& caption, const ChartStyle& style,
                                      const QSizeF& picture);

}  // namespace quillara
