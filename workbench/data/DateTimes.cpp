#include "workbench/data/DateTimes.h"

#include <algorithm>
#include <cmath>

#include "workbench/data/Calendar.h"
#include "workbench/data/DayNumber.h"

namespace quillara {
namespace {

constexpr std::size_t DateLength = 10;  // of YYYY-MM-DD
constexpr int MinuteLength = 60;
constexpr int HourLength = 3600;
constexpr int HoursOnClock = 24;
constexpr int MinutesOnClock = 60;
constexpr double FirstSecond = -719528 * SecondsOfDay;  // of the year 0
constexpr double BehindLastSecond = 2932897 * SecondsOfDay;  // of the year 9999
constexpr std::size_t MostDecimals = 18;  // whose digits are a whole number of 64 bits

/// Reads a text from its front.
class FrontReader {
  public:
    explicit FrontReader(std::string_view text) : Rest(text) {}

    [[nodiscard]] bool IsAtEnd() const { return Rest.empty(); }
    bool Skip(char sign) {
        const bool isThere = Rest.starts_with(sign);
        Rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }
    /// A number of two digits below `limit`.
    std::optional<int> Pair(int limit) {
        if (Rest.size() < 2 || !IsDigit(Rest[0]) || !IsDigit(Rest[1])) {
            return std::nullopt;
        }
        const int number = 10 * (Rest[0] - '0') + (Rest[1] - '0');
        Rest.remove_prefix(2);
        return number < limit ? std::optional(number) : std::nullopt;
    }
    /// The part of 1 that digits behind a point are.
    std::optional<double> Fraction() {
        std::size_t count = 0;
        std::int64_t digits = 0;
        for (; count < Rest.size() && count < MostDecimals && IsDigit(Rest[count]); ++count) {
            digits = 10 * digits + (Rest[count] - '0');
        }
        Rest.remove_prefix(count);
        const double part = static_cast<double>(digits) / std::pow(10.0, static_cast<double>(count));
        return count > 0 ? std::optional(part) : std::nullopt;
    }

  private:
    static bool IsDigit(char sign) { return '0' <= sign && sign <= '9'; }

    std::string_view Rest;
};

/// Seconds since midnight. They are put together with those of the day before their part is, which keeps its digits.
struct Clock {
    int Whole = 0;
    double Part = 0.0;
};

bool ReadSeconds(FrontReader& text, Clock& clock) {
    const std::optional<int> whole = text.Pair(MinuteLength);
    const bool hasFraction = whole && (text.Skip('.') || text.Skip(','));
    const std::optional<double> fraction = hasFraction ? text.Fraction() : std::optional(0.0);
    clock.Whole += whole.value_or(0);
    clock.Part = fraction.value_or(0.0);
    return whole && fraction;
}

/// Nothing for what is no time of a clock.
std::optional<Clock> ReadClock(FrontReader& text) {
    const std::optional<int> hours = text.Pair(HoursOnClock + 1);
    const std::optional<int> minutes = hours && text.Skip(':') ? text.Pair(MinutesOnClock) : std::nullopt;
    if (!minutes) {
        return std::nullopt;
    }
    Clock clock{*hours * HourLength + *minutes * MinuteLength};
    if (text.Skip(':') && !ReadSeconds(text, clock)) {
        return std::nullopt;
    }
    return clock.Whole + clock.Part <= SecondsOfDay ? std::optional(clock) : std::nullopt;
}

struct Zone {
    ZoneForm Form = ZoneForm::None;
    int Ahead = 0;  ///< of UTC, in seconds
};

/// Nothing where the rest of a text is no zone.
std::optional<Zone> ReadZone(FrontReader& text) {
    if (text.IsAtEnd()) {
        return Zone{};
    }
    if (text.Skip('Z')) {
        return text.IsAtEnd() ? std::optional(Zone{ZoneForm::Utc, 0}) : std::nullopt;
    }
    const bool isAhead = text.Skip('+');
    if (!isAhead && !text.Skip('-')) {
        return std::nullopt;
    }
    const std::optional<int> hours = text.Pair(HoursOnClock);
    const bool isWhole = text.IsAtEnd();
    text.Skip(':');
    const std::optional<int> minutes = isWhole ? std::optional(0) : text.Pair(MinutesOnClock);
    if (!hours || !minutes || !text.IsAtEnd()) {
        return std::nullopt;
    }
    const int shift = *hours * HourLength + *minutes * MinuteLength;
    return Zone{shift == 0 ? ZoneForm::Utc : ZoneForm::Shifted, isAhead ? shift : -shift};
}

/// The fewest digits behind the point that read back as the same number, with the point; empty for whole seconds.
std::string DecimalsOf(double seconds) {
    const double whole = std::floor(seconds);
    const double part = seconds - whole;
    if (part == 0.0) {
        return {};
    }
    std::string digits;
    double power = 1.0;
    for (std::size_t count = 1; count <= MostDecimals; ++count) {
        power *= 10.0;
        const double number = std::min(std::round(part * power), power - 1.0);
        digits = std::to_string(static_cast<std::int64_t>(number));
        digits.insert(std::size_t{0}, count - std::min(count, digits.size()), '0');
        if (whole + number / power == seconds) {
            break;
        }
    }
    return '.' + digits;
}

}  // namespace

void ZonesMet::Add(ZoneForm form) {
    None = None || form == ZoneForm::None;
    Utc = Utc || form == ZoneForm::Utc;
    Shifted = Shifted || form == ZoneForm::Shifted;
}

void ZonesMet::Add(const ZonesMet& others) {
    None = None || others.None;
    Utc = Utc || others.Utc;
    Shifted = Shifted || others.Shifted;
}

std::optional<WrittenDateTime> ReadDateTime(std::string_view text) {
    constexpr std::size_t shortest = DateLength + 6;  // with a sign between and HH:MM
    const bool mayBeOne = text.size() >= shortest && (text[DateLength] == 'T' || text[DateLength] == ' ');
    const std::int32_t day = mayBeOne ? DayNumber(text.substr(0, DateLength)) : NoDay;
    if (day == NoDay) {
        return std::nullopt;
    }
    FrontReader rest(text.substr(DateLength + 1));
    const std::optional<Clock> clock = ReadClock(rest);
    const std::optional<Zone> zone = clock ? ReadZone(rest) : std::nullopt;
    if (!zone) {
        return std::nullopt;
    }
    const double seconds = day * SecondsOfDay + clock->Whole - zone->Ahead;
    const bool isOfFourDigits = FirstSecond <= seconds && seconds < BehindLastSecond;
    return isOfFourDigits ? std::optional(WrittenDateTime{seconds + clock->Part, zone->Form}) : std::nullopt;
}

std::optional<double> SecondsFromDateTime(std::string_view text) {
    if (const std::optional<WrittenDateTime> read = ReadDateTime(text)) {
        return read->Seconds;
    }
    const std::optional<double> day = DaysFromText(text);
    return day ? std::optional(*day * SecondsOfDay) : std::nullopt;
}

std::string TextFromDateTime(double seconds, char between, DateTimePrecision precision) {
    const double day = std::floor(seconds / SecondsOfDay);
    std::string text = TextFromDays(day);
    if (text.empty() || precision == DateTimePrecision::Day) {
        return text;
    }
    constexpr std::size_t secondsPart = 3;  // of HH:MM:SS
    std::string clock = TextFromSeconds(std::floor(seconds) - day * SecondsOfDay);
    if (precision == DateTimePrecision::Minute) {
        clock.resize(clock.size() - secondsPart);
    }
    text += between + clock;
    return precision == DateTimePrecision::Exact ? text + DecimalsOf(seconds) : text;
}

DateTimePrecision PrecisionOf(double seconds) {
    if (std::floor(seconds) != seconds) {
        return DateTimePrecision::Exact;
    }
    if (std::fmod(seconds, double{MinuteLength}) != 0.0) {
        return DateTimePrecision::Second;
    }
    return std::fmod(seconds, SecondsOfDay) != 0.0 ? DateTimePrecision::Minute : DateTimePrecision::Day;
}

}  // namespace quillara
