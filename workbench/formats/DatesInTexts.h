#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"
#include "workbench/formats/DateNotation.h"

namespace quillara {

/// Makes dates, or dates with times, of the text variables whose texts are all dates in one and the same way
/// (FindDates), but those that are `kept`. Which of day and month stands first is told by `order` if the texts allow,
/// or else by the texts of the variable: with points between them the day does, with slashes and hyphens a number above
/// 12 decides, or one of another variable with the same sign. Where nothing does, and where texts are dates in several
/// ways, they stay. Gives a remark for the variables that were read in each way, and one for each variable that stays.
[[nodiscard]] std::vector<Remark> ReadDatesInTexts(DataTable& table, std::optional<DateOrder> order,
                                                   const std::vector<std::string>& kept);

}  // namespace quillara
