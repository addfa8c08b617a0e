#pragma once

#include <QString>
#include <vector>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// A bar as it is drawn: a category, or several neighbours that share a pixel.
struct HistogramBar {
    double Left = 0.0;  ///< in units of the x axis
    double Right = 0.0;
    double Height = 0.0;  ///< the count; of several categories the highest
    double Total = 0.0;  ///< cases of all its categories
    int Categories = 1;
    QString First;  ///< names of its categories
    QString Last;
    bool IsMissing = false;
    int Series = 0;
    int Point = 0;  ///< the first
    int Color = 0;
};

/// The bars of a histogram from left to right, at most about as many as there are pixels: more are gathered, the same
/// number each, and those of missing data never with others.
[[nodiscard]] std::vector<HistogramBar> BarsOf(const Histogram& chart, double pixels);

/// How many categories share a bar at a width in pixels; 1: each has its own.
[[nodiscard]] std::size_t CategoriesABar(const Histogram& chart, double pixels);

}  // namespace quillara
