#pragma once

#include <vector>

#include "workbench/charts/ChartTexts.h"
#include "workbench/documents/Subject.h"

namespace quillara {

/// What a plot of review variables says that has no cases, in the middle of its place.
[[nodiscard]] std::vector<PlacedText> NoCasesOfReview(const Subject& about, const QRectF& place,
                                                      const TextStyle& style);

}  // namespace quillara
