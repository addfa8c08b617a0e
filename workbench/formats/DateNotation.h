#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// Which of two numbers is the day, in 03/04/2024.
enum class DateOrder { DayFirst, MonthFirst };

/// What texts say of the way in which they are dates.
struct FoundDates {
    bool AreDates = false;  ///< all are, each in some way; else nothing below counts
    bool AreAlike = true;  ///< between the parts stands the same sign, and the year at the same end
    char Sign = '\0';  ///< between the parts of the first
    bool HaveTimes = false;
    bool HaveShortYears = false;
    bool CanHaveDayFirst = true;
    bool CanHaveMonthFirst = true;
    bool DependOnOrder = false;  ///< whether some are another day the other way round

    [[nodiscard]] bool CanHave(DateOrder order) const {
        return order == DateOrder::DayFirst ? CanHaveDayFirst : CanHaveMonthFirst;
    }
};

/// Looks at texts such as 31.12.2024, 31/12/24, 12-31-2024, 2024/12/31, 31 Dec 2024 or December 31, 2024, each perhaps
/// with a time of day such as 23:59, 23:59:59.5 or 11:59 PM. Months may have their English names or first three
/// letters. What stands in ISO 8601 is another way among others.
[[nodiscard]] FoundDates FindDates(const std::vector<std::string>& texts);

/// Such a text as ISO 8601 has it; nothing when that is no day of the calendar. Years of two digits are 1969 to 2068.
[[nodiscard]] std::optional<std::string> IsoText(std::string_view text, DateOrder order);

}  // namespace quillara
