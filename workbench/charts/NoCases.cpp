#include "workbench/charts/NoCases.h"

namespace quillara {

std::vector<PlacedText> NoCasesOfReview(const Subject& about, const QRectF& place, const TextStyle& style) {
    QStringList lines{QStringLiteral("No cases")};
    if (about.IsEmptied) {
        lines += WrappedLines(QStringLiteral("A drill step on Missing leaves none in the plots of review variables."),
                              style, place.width());
    }
    double y = place.center().y() - static_cast<double>(lines.size()) * LineHeight(style) / 2;
    std::vector<PlacedText> texts;
    for (const QString& line : lines) {
        texts.push_back(TextAt({place.center().x(), y}, Qt::AlignHCenter | Qt::AlignTop, line, style));
        y += LineHeight(style);
    }
    return texts;
}

}  // namespace quillara
