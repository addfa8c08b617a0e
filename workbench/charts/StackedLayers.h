#pragma once

#include <QString>
#include <vector>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// A layer of a column of a stacked plot: a category, or several neighbours that are too thin to be seen alone.
struct StackedLayer {
    double Top = 0.0;  ///< percent
    double Bottom = 0.0;
    QString First;  ///< names of its categories, from the lowest; empty: not known
    QString Last;
    int Categories = 1;
    bool IsMissing = false;
    int Series = 0;
    double Shade = 0.0;  ///< the place in its column, from 0 (the lowest) to 1

    [[nodiscard]] double Share() const { return Top - Bottom; }
};

/// The layers of a column that have cases, from the top down. Neighbours thinner than `least` percent are put together
/// until they reach it, missing data never with others.
[[nodiscard]] std::vector<StackedLayer> LayersOf(const StackedPlot& chart, std::size_t column, double least);

}  // namespace quillara
