#pragma once

#include <string>

#include "workbench/data/DataTable.h"

namespace quillara {

/// What an analysis calls an interval, "a<x<=b" in whatever form, for people: the period of the calendar whose dates it
/// has (PeriodName.h), "to 2025-07" or "from 2025-07" where it has an end with a month only, and else its name by
/// bounds.
[[nodiscard]] std::string NameInDates(ValueKind kind, const std::string& name, double lower, double upper);

/// The same name with its bounds as dates or times. Dates have no
/// parts of a day: a bound within one is shown as the day that gives the interval the same dates, and with its time
/// only where the interval is shorter than a day. Bounds less than a second apart are shown as numbers, so that
/// different intervals never have one name; those of date-times have as much of their time as both bounds need. Of a
/// single value, which `upper` is then, this is the date or time itself.
[[nodiscard]] std::string NameByBounds(ValueKind kind, const std::string& name, double lower, double upper);

/// The first with the bounds taken from the name, which is that of a category or of missing data; of a single value the
/// name is the date as YYYYMMDD. Any other text stays as it is, and so does the name of a number, a text or a
/// date-time, whose number has more digits than a name.
[[nodiscard]] std::string NameInDates(ValueKind kind, const std::string& name);

}  // namespace quillara
