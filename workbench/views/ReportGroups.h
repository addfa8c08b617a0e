#pragma once

#include <cstddef>
#include <vector>

#include "workbench/views/ShownTable.h"

namespace quillara {

/// Entries of a collection that stand together in a report: a frequency table and then the charts of its variable, or
/// one document of its own.
using ReportGroup = std::vector<std::size_t>;

/// The results of one step in the order of the documents, but each chart of one variable together with the frequency
/// table of that variable, if the step has one.
[[nodiscard]] std::vector<ReportGroup> ReportGroups(const OutputCollection& outputs, const StepResults& step);

}  // namespace quillara
