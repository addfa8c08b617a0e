#pragma once

#include <cstdint>
#include <string>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

enum class ChartFormat : std::uint8_t { Svg, Png, Pdf };

/// How a picture of a chart looks.
struct ChartLook {
    int Width = 900;  ///< pixels, 96 to the inch; from 120 on
    int Height = 600;
    bool Dark = false;  ///< light texts on a dark ground
};

/// The bytes of a file with the picture of a graph. The same graph and look always give the same SVG.
/// Works without a screen and without an application object: the first call makes one that draws off screen when there
/// is none. Call it from one thread only, the one of the application object.
/// Throws DataError when the picture is too large to be painted.
[[nodiscard]] std::string PaintedChart(const GraphDocument& document, const ChartLook& look, ChartFormat format);

}  // namespace quillara
