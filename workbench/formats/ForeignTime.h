#pragma once

#include <optional>
#include <string_view>

#include "workbench/data/DataTable.h"

namespace quillara {

/// How the numbers of a statistical file with a date or time format become ours: dates days since 1970-01-01, times of
/// day seconds, dates with times seconds since 1970-01-01T00:00:00.
///
/// - A date becomes a Date, a part of a day dropped, unless a date lies outside the years 1 to 9999.
/// - A week, month, quarter or half-year becomes the Date of its first day, unless that lies outside these years.
/// - A date and a time become a Date, unless a value is no whole day or lies outside these years. WithTimes takes them
///   for DateTimes, unless one lies outside these years: to the thousandth or millionth of a second that the number of
///   the file stands for, as far as its digits tell. Leap seconds that the file counts are left out.
/// - A time becomes a TimeOfDay, unless a value is negative or a day and more.
/// - A date and a time of which the format shows the time only become the TimeOfDay.
///
/// Where an "unless" holds for a single value, all numbers of the variable stay as they are.
class ForeignTime {
  public:
    /// The conversion for a display format of a file with this extension; nothing when it shows no date or time.
    [[nodiscard]] static std::optional<ForeignTime> Find(std::string_view extension, std::string_view format);

    /// What takes dates with times for DateTimes; nothing for other formats.
    [[nodiscard]] std::optional<ForeignTime> WithTimes() const;
    /// Date, TimeOfDay or DateTime.
    [[nodiscard]] ValueKind Kind() const;
    /// The value in our units; nothing when it rules the conversion out. The value must be finite.
    [[nodiscard]] std::optional<double> Convert(double value) const;
    /// The value of the file next to ours; nothing when there is none, or the file counts weeks or longer.
    [[nodiscard]] std::optional<double> Nearest(double ours) const;
    /// The value of the file that Convert makes exactly ours.
    [[nodiscard]] std::optional<double> Invert(double ours) const;

    /// What the number in a file counts and what its format shows.
    enum class Scale {
        Days,
        DateOfSeconds,
        DateAndTimeOfSeconds,
        DateAndTimeOfMilliseconds,
        DateAndTimeOfLeapMilliseconds,  ///< of which leap seconds count too
        MomentOfSeconds,
        MomentOfMilliseconds,
        MomentOfLeapMilliseconds,
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
