#pragma once

#include <memory>
#include <optional>

#include "workbench/data/MissingReasons.h"
#include "workbench/formats/ForeignTime.h"
#include "workbench/formats/StatisticalTable.h"

namespace quillara {

/// What stands for missing data with a mark, a small letter or an underscore, among the numbers of a column: NaN.
[[nodiscard]] double MarkedMissing(char mark);

/// Takes the missing values out of the numbers of a column, which become NaN, as the reasons of its cases: those in
/// declared ranges and those with a mark. Their labels go with them. Null when nothing is declared, marked or labelled.
[[nodiscard]] std::shared_ptr<MissingReasons> TakeReasonsOfNumbers(StatisticalColumn& column, const LabelSet& labels);

/// The reasons of a column of texts, whose cases are there (AppendText).
[[nodiscard]] std::shared_ptr<MissingReasons> TakeReasonsOfTexts(StatisticalColumn& column, const LabelSet& labels);

/// Brings reasons into the units of a conversion. False when the file's own values wouldn't come back from it.
[[nodiscard]] bool ConvertReasons(const ForeignTime& time, MissingReasons& reasons);

}  // namespace quillara
