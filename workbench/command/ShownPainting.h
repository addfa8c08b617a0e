#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

#include "workbench/charts/ChartFile.h"

namespace quillara {

/// Paints charts and shows how many are done, also while a single one takes long: a painter tells nothing on its way,
/// so that the bar is drawn beside it. Nothing else may be written to standard error meanwhile.
class ShownPainting {
  public:
    /// `charts` are so many calls of Paint.
    explicit ShownPainting(std::int32_t charts);

    /// As PaintChart does.
    [[nodiscard]] std::string Paint(const GraphDocument& graph, const ChartLook& look, ChartFormat format);

  private:
    std::atomic<std::int32_t> Painted = 0;
    std::jthread Display;  ///< ends before the number that it shows
};

}  // namespace quillara
