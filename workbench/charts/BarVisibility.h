#pragma once

#include "workbench/charts/CountTable.h"

namespace quillara {

/// Share of a place of the floor that a bar takes, along either side.
inline constexpr double BarWidth3D = 0.7;

/// Whether in an oblique view from the front some bar would lie for the most part behind others.
[[nodiscard]] bool BarsHideOthers(const CountTable& table);

}  // namespace quillara
