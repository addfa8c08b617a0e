#pragma once

#include <optional>
#include <string_view>

#include "workbench/data/DataTable.h"

namespace quillara {

/// A value as people write it, and what it stands for by its form.
struct WrittenValue {
    double Value = 0.0;
    ValueKind Kind = ValueKind::Number;
};

/// A time of day HH:MM:SS or HH:MM.
[[nodiscard]] std::optional<double> TimeFromText(std::string_view text);

/// A day YYYY-MM-DD, a day with a time (DateTimes.h), a time of day HH:MM or HH:MM:SS, or a decimal number; nothing for
/// any other text.
[[nodiscard]] std::optional<WrittenValue> ReadWrittenValue(std::string_view text);

}  // namespace quillara
