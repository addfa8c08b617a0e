#pragma once

#include <optional>
#include <string>

#include "workbench/data/DateTimes.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// A remark on a variable of dates with times by what its fields have: some a zone and some none, or a clock other than
/// that of UTC, in which all are shown. Nothing where neither is so.
[[nodiscard]] std::optional<Remark> RemarkOnZones(const std::string& variable, const ZonesMet& zones);

}  // namespace quillara
