#pragma once

#include <QColor>

namespace quillara {

/// The colour that stands for a colour number of the analysis; numbers without one of their own share in turn.
[[nodiscard]] QColor SeriesColor(int number, bool isDark);
/// The colour of the i-th slice of a pie, from 0. Neighbours differ, also where the colours come round again.
[[nodiscard]] QColor SliceColor(int slice, bool isDark);
/// A layer of a stacked column: one tone a column, from dark (shade 0, the lowest layer) to light (1). Neighbouring
/// columns differ in tone, as the same colour would claim the same category.
[[nodiscard]] QColor LayerColor(int column, double shade, bool isDark);
/// From faint (0) to strong (1), even in brightness, so that it survives printing in grey.
[[nodiscard]] QColor HeatColor(double share, bool isDark);
/// Black or white, whichever is read better on a ground.
[[nodiscard]] QColor InkOn(const QColor& ground);
/// A colour darkened (below 1) or lightened (above 1), as a face of a body turned from or to the light.
[[nodiscard]] QColor Shaded(const QColor& color, double light);

}  // namespace quillara
