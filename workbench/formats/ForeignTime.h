#pragma once

#include <optional>
#include <string_view>

#include "workbench/data/DataTable.h"

namespace quillara {

/// How the numbers of a statistical file with a date or time format become ours: dates days since 1970-01-01, times of
/// day seconds.
///
///   format of the file shows    becomes                                       unless (then the numbers stay as they
///   are) a date                      Date, a part of a day dropped                 a date is outside the years 1 to
///   9999 a week, month, quarter, ... Date, its first day                           as above a date and a time Date
///   also if a value is not a whole day a time                      TimeOfDay                                     a
///   value is negative or a day and more a date and a time,
///     of which only the time    TimeOfDay
class ForeignTime {
  public:
    /// The conversion for a display format of a file with this extension; nothing when it shows no date or time.
    [[nodiscard]] static std::optional<ForeignTime> Find(std::string_view extension, std::string_view format);

    /// Date or TimeOfDay.
    [[nodiscard]] ValueKind Kind() const;
    /// The value in our units; nothing when it rules the conversion out. The value must be finite.
    [[nodiscard]] std::optional<double> Convert(double value) const;
    /// The value of the file that Convert makes ours; nothing when there is none, or the file counts weeks or longer.
    [[nodiscard]] std::optional<double> Invert(double ours) const;

    /// What the number in a file counts and what its format shows.
    enum class Scale {
        Days,
        DateOfSeconds,
        DateAndTimeOfSeconds,
        DateAndTimeOfMilliseconds,
        Weeks,
        Months,
        Quarters,
        HalfYears,
        ClockOfSeconds,
        ClockOfDateMilliseconds,
    };

  private:
    ForeignTime(Scale scale, double epoch) : Shown(scale), Epoch(epoch) {}

    Scale Shown;
    double Epoch;  // the day from which the file counts, in days since 1970-01-01
};

}  // namespace quillara
