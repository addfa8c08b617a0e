#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/CalendarPeriods.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// How a continuous drill variable is to be cut into categories. Method is the module's number of the method; the
/// other fields count for the methods that use them.
struct Categorization {
    int Method = 0;  ///< 0 distinct, 1 exact, 2 neat, 3 step, 4 integer, 5 bounds
    int Count = 0;  ///< exact, neat: number of intervals
    double StepSize = 0.0;  ///< step
    double StepStart = 0.0;  ///< step: first bound, unless StartAtMin
    bool StartAtMin = false;  ///< step: the intervals start at the smallest value
    std::vector<double> Bounds;  ///< bounds: upper boundaries, rising
    ValueKind WrittenAs = ValueKind::Number;  ///< bounds, step: how boundaries and start are given
    std::optional<CalendarPeriod> Period{};  ///< of dates, to be made bounds or steps from the data (InData)
};

/// How many intervals it makes, whatever the data are; nothing where they say it.
[[nodiscard]] std::optional<std::size_t> IntervalsOf(const Categorization& how);

/// A categorization from the way people write it: distinct | exact:N | neat:N | step:SIZE | step:SIZE@START | integer |
/// bounds:B1,B2,... | hour | day | week | month | quarter | year. START and boundaries may be days YYYY-MM-DD, days
/// with times or times HH:MM or HH:MM:SS, SIZE a time. Throws UsageError saying what is wrong with it.
[[nodiscard]] Categorization ParseCategorization(std::string_view text);

}  // namespace quillara
