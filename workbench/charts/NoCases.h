#pragma once

#include <vector>

#include "workbench/charts/ChartTexts.h"

namespace quillara {

/// What a plot of review variables says that has no cases, in the middle of its place.
[[nodiscard]] std::vector<PlacedText> NoCasesOfReview(const QRectF& place, const TextStyle& style);

}  // namespace quillara
