#include "workbench/formats/DateNotation.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "workbench/data/CalendarParts.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

constexpr std::size_t DigitsOfYear = 4;
constexpr int FirstShortYear = 69;  // of 19..; those before are of 20..

/// Digits or letters from the front of a text.
template <typename Test>
std::string_view TakeWhile(std::string_view& text, Test test) {
    const std::string_view taken =
        text.substr(0, static_cast<std::size_t>(std::ranges::find_if_not(text, test) - text.begin()));
    text.remove_prefix(taken.size());
    return taken;
}

bool IsDigit(char sign) {
    return '0' <= sign && sign <= '9';
}

bool IsLetter(char sign) {
    const char small = static_cast<char>(sign | 0x20);
    return 'a' <= small && small <= 'z';
}

/// 1 to 12; 0 for what is no name of a month.
int MonthNamed(std::string_view word) {
    constexpr std::size_t shortest = 3;
    const std::string small = InSmallLetters(word);
    for (std::size_t month = 0; month < MonthNames.size(); ++month) {
        const std::string name = InSmallLetters(MonthNames[month]);
        if (small == name || (small.size() == shortest && name.starts_with(small))) {
            return static_cast<int>(month) + 1;
        }
    }
    return 0;
}

int NumberOf(std::string_view digits) {
    int number = 0;
    for (const char digit : digits) {
        number = 10 * number + (digit - '0');
    }
    return number;
}

/// A text taken apart.
struct DateParts {
    std::array<int, 2> DayAndMonth{};  // in the order of the text, or as OrderIsTold says
    std::string_view Year{};
    std::string_view Time{};  // with what stands between it and the day
    char Sign = '\0';
    bool IsYearFirst = false;
    bool OrderIsTold = false;  // the day stands first
};

/// One of the three parts of a day: a number, or a month by its name.
struct DatePart {
    std::string_view Digits{};
    int NamedMonth = 0;

    [[nodiscard]] int Number() const { return NamedMonth > 0 ? NamedMonth : NumberOf(Digits); }
    [[nodiscard]] bool IsOneOrTwoDigits() const { return Digits.size() == 1 || Digits.size() == 2; }
    [[nodiscard]] bool IsYear() const { return Digits.size() == 2 || Digits.size() == DigitsOfYear; }
};

std::optional<DatePart> TakePart(std::string_view& text) {
    if (const std::string_view digits = TakeWhile(text, IsDigit); !digits.empty()) {
        return digits.size() <= DigitsOfYear ? std::optional(DatePart{.Digits = digits}) : std::nullopt;
    }
    const int month = MonthNamed(TakeWhile(text, IsLetter));
    return month > 0 ? std::optional(DatePart{.NamedMonth = month}) : std::nullopt;
}

/// The sign between two parts, a blank behind a point or comma aside; 0: none.
char TakeSign(std::string_view& text) {
    constexpr std::string_view signs = "./- ,";
    if (text.empty() || signs.find(text.front()) == std::string_view::npos) {
        return '\0';
    }
    const char sign = text.front();
    text.remove_prefix(1);
    if ((sign == '.' || sign == ',') && text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    return sign;
}

/// 31 Dec 2024, 31-Dec-24, December 31, 2024.
std::optional<DateParts> WithNamedMonth(const std::array<DatePart, 3>& parts, std::string_view time) {
    const bool isMonthFirst = parts[0].NamedMonth > 0;
    const DatePart& day = parts[isMonthFirst ? 1 : 0];
    const DatePart& month = parts[isMonthFirst ? 0 : 1];
    if (!day.IsOneOrTwoDigits() || month.NamedMonth == 0 || !parts[2].IsYear()) {
        return std::nullopt;
    }
    return DateParts{.DayAndMonth = {day.Number(), month.Number()},
                     .Year = parts[2].Digits,
                     .Time = time,
                     .Sign = 'a',
                     .OrderIsTold = true};
}

std::optional<DateParts> PartsOf(std::string_view text) {
    std::array<DatePart, 3> parts{};
    std::array<char, 2> signs{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::optional<DatePart> part = TakePart(text);
        if (!part || (i < signs.size() && (signs[i] = TakeSign(text)) == '\0')) {
            return std::nullopt;
        }
        parts[i] = *part;
    }
    if (parts[0].NamedMonth > 0 || parts[1].NamedMonth > 0) {
        return WithNamedMonth(parts, text);
    }
    const bool isYearFirst = parts[0].Digits.size() == DigitsOfYear;
    const DatePart& year = parts[isYearFirst ? 0 : 2];
    const DatePart& first = parts[isYearFirst ? 2 : 0];
    const bool isDay = year.IsYear() && first.IsOneOrTwoDigits() && parts[1].IsOneOrTwoDigits();
    if (!isDay || signs[0] != signs[1] || signs[0] == ' ' || signs[0] == ',') {
        return std::nullopt;
    }
    return DateParts{.DayAndMonth = {first.Number(), parts[1].Number()},
                     .Year = year.Digits,
                     .Time = text,
                     .Sign = signs[0],
                     .IsYearFirst = isYearFirst,
                     .OrderIsTold = isYearFirst};
}

std::string Padded(int number, std::size_t digits = 2) {
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string LongYear(std::string_view year) {
    constexpr int century = 100;
    const int number = NumberOf(year);
    const int whole = year.size() == DigitsOfYear ? number : number + (number < FirstShortYear ? 20 : 19) * century;
    return Padded(whole, DigitsOfYear);
}

/// T23:59:59 of " 11:59:59 PM"; nothing for what is no time so written.
std::optional<std::string> IsoTime(std::string_view time) {
    constexpr int noon = 12;
    const bool hasSign = time.starts_with(' ') || time.starts_with('T') || time.starts_with(',');
    time.remove_prefix(hasSign ? std::min(time.find_first_of("0123456789"), time.size()) : 0);
    const std::string_view hours = TakeWhile(time, IsDigit);
    if (!hasSign || hours.empty() || hours.size() > 2 || !time.starts_with(':')) {
        return std::nullopt;
    }
    int hour = NumberOf(hours);
    const std::size_t end = std::min(time.find_first_not_of("0123456789:.,"), time.size());
    const std::string rest = InSmallLetters(time.substr(end));
    time = time.substr(0, end);
    const bool isAfterNoon = rest == " pm" || rest == "pm";
    const bool isBeforeNoon = rest == " am" || rest == "am";
    if (isAfterNoon || isBeforeNoon) {
        if (hour < 1 || hour > noon) {
            return std::nullopt;
        }
        hour = hour % noon + (isAfterNoon ? noon : 0);
    } else if (!rest.empty()) {
        return std::nullopt;
    }
    return 'T' + Padded(hour) + std::string(time);
}

std::optional<std::string> IsoText(const DateParts& parts, DateOrder order) {
    const bool isDayFirst = parts.OrderIsTold || order == DateOrder::DayFirst;
    const int day = parts.DayAndMonth[isDayFirst ? 0 : 1];
    const int month = parts.DayAndMonth[isDayFirst ? 1 : 0];
    std::string text = LongYear(parts.Year) + '-' + Padded(month) + '-' + Padded(day);
    if (!parts.Time.empty()) {
        const std::optional<std::string> time = IsoTime(parts.Time);
        if (!time) {
            return std::nullopt;
        }
        text += *time;
    }
    return SecondsFromDateTime(text) ? std::optional(text) : std::nullopt;
}

}  // namespace

FoundDates FindDates(const std::vector<std::string>& texts) {
    FoundDates found;
    std::optional<DateParts> first;
    for (const std::string& text : texts) {
        const std::optional<DateParts> parts = PartsOf(text);
        const std::optional<std::string> dayFirst = parts ? IsoText(*parts, DateOrder::DayFirst) : std::nullopt;
        const std::optional<std::string> monthFirst = parts ? IsoText(*parts, DateOrder::MonthFirst) : std::nullopt;
        if (!dayFirst && !monthFirst) {
            return {};
        }
        first = first ? first : parts;
        found.AreAlike = found.AreAlike && parts->Sign == first->Sign && parts->IsYearFirst == first->IsYearFirst;
        found.HaveTimes = found.HaveTimes || !parts->Time.empty();
        found.HaveShortYears = found.HaveShortYears || parts->Year.size() < DigitsOfYear;
        found.CanHaveDayFirst = found.CanHaveDayFirst && dayFirst;
        found.CanHaveMonthFirst = found.CanHaveMonthFirst && monthFirst;
        found.DependOnOrder = found.DependOnOrder || dayFirst != monthFirst;
    }
    found.AreDates = first.has_value();
    found.Sign = first ? first->Sign : '\0';
    return found;
}

std::optional<std::string> IsoText(std::string_view text, DateOrder order) {
    const std::optional<DateParts> parts = PartsOf(text);
    return parts ? IsoText(*parts, order) : std::nullopt;
}

}  // namespace quillara
