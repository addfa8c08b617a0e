#include "workbench/charts/NumberAxis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "workbench/charts/CalendarAxis.h"
#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"

namespace quillara {
namespace {

constexpr double Slack = 1e-9;  // of a step, for bounds that are round themselves
constexpr int MostPlainDigits = 15;
constexpr double MostPlain = 1e15;
constexpr int MostDecimals = 7;
constexpr int MostDigits = 17;  // that tell any two doubles apart
constexpr double FinestStep = 1e-15;  // of the bounds, before it is lost in their digits

/// Half the width of a range, because the whole may be more than a double holds.
double UsualStep(double halfWidth, int most) {
    const double least = std::max(halfWidth / most * 2, std::numeric_limits<double>::min());
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : std::array{1.0, 2.0, 5.0, 10.0}) {
        const double step = factor * power;
        const double steps = std::floor(2 * (halfWidth / step) + Slack) + 1;
        if (step >= least * (1.0 - Slack) && steps <= most) {
            return step;
        }
    }
    return 20.0 * power;
}

double CountAt(double step, double low, double high) {
    return std::floor(high / step + Slack) - std::ceil(low / step - Slack) + 1;
}

/// A step of 5 that leaves one number alone, or none, gives way to one of 4.
double StepFor(double low, double high, int most) {
    const double step = UsualStep(high / 2 - low / 2, most);
    const double other = step / 5 * 4;
    const bool isFive = std::fabs(step / std::pow(10.0, std::floor(std::log10(step))) - 5.0) < Slack;
    const double count = CountAt(step, low, high);
    const bool isBetter = count < 2 && CountAt(other, low, high) > count;
    return isFive && isBetter && CountAt(other, low, high) <= most ? other : step;
}

/// The place of the first digit of a number before (0, 1, ...) or behind (-1, ...) its point.
int FirstDigit(double number) {
    const double place = std::floor(std::log10(number) + Slack);
    return std::isfinite(place) ? static_cast<int>(place) : 0;  // 0 has no digits
}

/// How the numbers of one axis are written.
class TickForm {
  public:
    TickForm(double largest, double step) : Decimals(std::max(0, -FirstDigit(step))) {
        IsPlain = largest < MostPlain && Decimals <= MostDecimals && FirstDigit(largest) + Decimals < MostPlainDigits;
        Digits = std::clamp(FirstDigit(largest) - FirstDigit(step), 0, MostDigits - 1);
    }
    [[nodiscard]] QString TextOf(double number) const {
        if (IsPlain || number == 0.0) {
            return QString::number(number, 'f', IsPlain ? Decimals : 0);
        }
        return QString::number(number, 'e', Digits);
    }

  private:
    int Decimals;
    bool IsPlain = true;
    int Digits = 0;  // behind the first, in the form with an exponent
};

std::vector<AxisMark> OneValue(double low, double high, ValueKind kind) {
    const double value = std::isfinite(low) ? low : high;
    return std::isfinite(value) ? std::vector<AxisMark>{{value, ValueText(value, kind)}} : std::vector<AxisMark>{};
}

}  // namespace

std::vector<AxisMark> RoundNumbers(double low, double high, int most) {
    if (!(low < high) || !std::isfinite(low) || !std::isfinite(high)) {
        return OneValue(low, high, ValueKind::Number);
    }
    const double step = StepFor(low, high, std::max(most, 2));
    const double largest = std::max(std::fabs(low), std::fabs(high));
    if (step < largest * FinestStep) {
        return OneValue(low, high, ValueKind::Number);
    }
    const TickForm form(largest, step);
    const double first = std::ceil(low / step - Slack);
    const int count = static_cast<int>(std::min<double>(CountAt(step, low, high), std::max(most, 2)));
    std::vector<AxisMark> marks;
    for (int i = 0; i < count; ++i) {
        const double number = (first + i) * step;
        marks.push_back({number == 0.0 ? 0.0 : number, form.TextOf(number)});
    }
    return marks;
}

std::vector<AxisMark> RoundValues(double low, double high, int most, ValueKind kind) {
    const bool isOne = !(low < high) || !std::isfinite(low) || !std::isfinite(high);
    std::vector<AxisMark> marks;
    if (!isOne && kind == ValueKind::Date) {
        marks = RoundDates(low, high, most);
    } else if (!isOne && kind == ValueKind::TimeOfDay) {
        marks = RoundTimes(low, high, most);
    } else if (!isOne && kind == ValueKind::DateTime) {
        marks = RoundDateTimes(low, high, most);
    } else if (isOne) {
        return OneValue(low, high, kind);
    }
    return marks.empty() ? RoundNumbers(low, high, most) : marks;
}

QString NumberText(double number, int digits) {
    const double magnitude = std::fabs(number);
    if (number == 0.0) {
        return QStringLiteral("0");
    }
    if (magnitude < MostPlain && std::floor(number) == number) {
        return QString::number(number, 'f', 0);
    }
    constexpr double leastPlain = 1.0;
    const bool needsMore = leastPlain <= magnitude && magnitude < MostPlain;
    return QString::number(number, 'g', needsMore ? std::max(digits, FirstDigit(magnitude) + 3) : digits);
}

QString ValueText(double value, ValueKind kind) {
    const std::string text = kind == ValueKind::Date        ? TextFromDays(value)
                             : kind == ValueKind::TimeOfDay ? TextFromSeconds(value)
                             : kind == ValueKind::DateTime
                                 ? TextFromDateTime(value, ' ', std::min(PrecisionOf(value), DateTimePrecision::Second))
                                 : std::string();
    return text.empty() ? NumberText(value) : QString::fromStdString(text);
}

QString DistanceText(double distance, ValueKind kind) {
    constexpr double longest = 2 * SecondsOfDay;
    if (kind == ValueKind::DateTime && std::fabs(distance) >= longest) {
        return NumberText(distance / SecondsOfDay, 3) + QStringLiteral(" days");
    }
    return kind == ValueKind::Date ? NumberText(distance) + QStringLiteral(" days")
                                   : ValueText(distance, kind == ValueKind::DateTime ? ValueKind::TimeOfDay : kind);
}

NumberRange Widened(NumberRange range, double share) {
    const double width = range.High - range.Low;
    const double room = width > 0.0 ? width * share : std::max(std::fabs(range.Low) * 0.1, 0.5);
    return {range.Low - room, range.High + room};
}

}  // namespace quillara
