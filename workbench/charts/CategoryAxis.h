#pragma once

#include <vector>

#include "workbench/charts/ChartArea.h"
#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// An axis as the document gives it.
[[nodiscard]] AreaAxis GivenAxis(const GraphAxis& axis);
/// The whole label at a position; empty when there is none.
[[nodiscard]] QString LabelAt(const GraphAxis& axis, double at);
/// Counts of one chart, all with the same number of decimals.
[[nodiscard]] std::vector<QString> CountTexts(const std::vector<double>& counts);
[[nodiscard]] QString CountText(double count);
/// With one decimal; a share that would read as none or as all is "<0.1%" or ">99.9%".
[[nodiscard]] QString PercentText(double part, double total);
/// "Female: 10771 (33.1%)"; without the share when there is no total.
[[nodiscard]] QString CountTip(const QString& name, double count, double total);

}  // namespace quillara
