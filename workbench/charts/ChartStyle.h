#pragma once

#include <QColor>
#include <QFont>
#include <QSizeF>

#include "workbench/charts/ChartFile.h"
#include "workbench/charts/ChartTexts.h"

namespace quillara {

/// Colours and fonts of one picture.
struct ChartStyle {
    bool IsDark = false;
    QColor Background;
    QColor Ink;  ///< of texts
    QColor FaintInk;  ///< of texts of second rank and of marks beside the data
    QColor Frame;  ///< lines of the axes
    QColor Grid;
    QColor MissingFill;  ///< the neutral look of missing data: this fill under
    QColor MissingHatch;  ///< slanted lines of this colour
    QColor OtherFill;  ///< of categories that were gathered
    double TextSize = 12.0;  ///< pixels
    QSizeF Picture;  ///< pixels

    [[nodiscard]] TextStyle Heading() const;
    [[nodiscard]] TextStyle Text() const;
    [[nodiscard]] TextStyle FaintText() const;
    /// Upright text of another size, in pixels.
    [[nodiscard]] TextStyle TextOfSize(double size) const;
};

[[nodiscard]] ChartStyle StyleOf(const ChartLook& look);

}  // namespace quillara
