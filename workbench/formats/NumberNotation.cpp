#include "workbench/formats/NumberNotation.h"

#include <algorithm>
#include <array>

#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr std::array<std::string_view, 4> Currencies = {"$", "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5"};
constexpr char Plus = '+';
constexpr char Minus = '-';

/// A text taken apart: -$1,234.5 %
struct NumberParts {
    bool IsNegative = false;
    bool IsPercent = false;
    std::string_view Currency{};
    std::string_view Body{};  // without signs: digits, points and commas where it is a number
};

bool TakeAway(std::string_view& text, std::string_view part) {
    const bool isFront = text.starts_with(part);
    if (!isFront && !text.ends_with(part)) {
        return false;
    }
    isFront ? text.remove_prefix(part.size()) : text.remove_suffix(part.size());
    return true;
}

void Trim(std::string_view& text) {
    while (text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    while (text.ends_with(' ')) {
        text.remove_suffix(1);
    }
}

void TakeSign(NumberParts& parts) {
    if (parts.Body.starts_with(Minus) || parts.Body.starts_with(Plus)) {
        parts.IsNegative = parts.Body.front() == Minus;
        parts.Body.remove_prefix(1);
    }
}

NumberParts PartsOf(std::string_view text) {
    NumberParts parts{.Body = text};
    const bool isSignInFront = text.starts_with(Minus) || text.starts_with(Plus);
    TakeSign(parts);
    for (const std::string_view currency : Currencies) {
        if (parts.Currency.empty() && TakeAway(parts.Body, currency)) {
            parts.Currency = currency;
        }
    }
    if (parts.Body.ends_with('%')) {
        parts.IsPercent = true;
        parts.Body.remove_suffix(1);
    }
    Trim(parts.Body);
    if (!isSignInFront) {
        TakeSign(parts);  // $-5
    }
    return parts;
}

std::size_t LeadingDigits(std::string_view text) {
    const auto* end = std::ranges::find_if(text, [](char sign) { return sign < '0' || sign > '9'; });
    return static_cast<std::size_t>(end - text.begin());
}

bool AreDigits(std::string_view text) {
    return !text.empty() && LeadingDigits(text) == text.size();
}

/// How a body is a number with one of point and comma before its decimals.
struct BodyReading {
    bool IsNumber = false;
    bool HasThousands = false;
    bool HasLongWhole = false;  // four digits or more without groups
};

/// Whether every three digits before the decimals are a group: "12" and "345" of "12,345".
bool HasGroups(std::string_view whole, char between) {
    constexpr std::size_t group = 3;
    const std::size_t first = LeadingDigits(whole);
    if (first == 0 || first > group || whole.front() == '0' || first == whole.size()) {
        return false;
    }
    for (whole.remove_prefix(first); !whole.empty(); whole.remove_prefix(group + 1)) {
        if (whole.size() < group + 1 || whole.front() != between || !AreDigits(whole.substr(1, group))) {
            return false;
        }
    }
    return true;
}

BodyReading ReadBody(std::string_view body, char point) {
    constexpr std::size_t longestGroup = 3;
    const std::size_t place = body.find(point);
    const std::string_view whole = body.substr(0, place);
    const bool hasDecimals = place != std::string_view::npos;
    if (HasGroups(whole, point == '.' ? ',' : '.')) {
        return {.IsNumber = !hasDecimals || AreDigits(body.substr(place + 1)), .HasThousands = true};
    }
    double value = 0;
    return {.IsNumber = ReadDecimal(body, point, value) == DecimalOutcome::Number,
            .HasLongWhole = LeadingDigits(whole) > longestGroup};
}

/// What all bodies are with one of point and comma before decimals.
struct AllBodies {
    char Point = '.';
    bool AreNumbers = true;
    bool HaveThousands = false;
    bool HaveLongWhole = false;
    bool HaveDecimalComma = false;

    void Take(std::string_view body) {
        const BodyReading reading = ReadBody(body, Point);
        AreNumbers = AreNumbers && reading.IsNumber;
        HaveThousands = HaveThousands || reading.HasThousands;
        HaveLongWhole = HaveLongWhole || reading.HasLongWhole;
        HaveDecimalComma = HaveDecimalComma || (Point == ',' && body.find(',') != std::string_view::npos);
    }
    [[nodiscard]] bool IsOneWay() const { return AreNumbers && !(HaveThousands && HaveLongWhole); }
};

bool IsNumberInSomeWay(std::string_view body, char decimal) {
    return ReadBody(body, ',').IsNumber || (decimal == '.' && ReadBody(body, '.').IsNumber);
}

FoundNotation Finding(const AllBodies& pointed, const AllBodies& withComma, const NumberNotation& signs, char decimal) {
    NumberNotation notation = signs;
    const bool isPointed = decimal == '.' && pointed.IsOneWay();
    const bool canHaveComma =
        withComma.IsOneWay() && (decimal == ',' || withComma.HaveDecimalComma || withComma.HaveThousands);
    if (!isPointed && !canHaveComma) {
        return {.Finding = NotationFinding::Mixed};
    }
    notation.Point = isPointed ? '.' : ',';
    notation.HasThousands = isPointed ? pointed.HaveThousands : withComma.HaveThousands;
    if (notation == NumberNotation{.Point = decimal}) {
        return {};
    }
    // Points alone are decimals, as in plain numbers.
    const bool isUnsure = isPointed && canHaveComma && withComma.HaveDecimalComma;
    return {.Finding = isUnsure ? NotationFinding::Unsure : NotationFinding::Certain, .Notation = notation};
}

}  // namespace

FoundNotation FindNotation(const std::vector<std::string>& texts, char decimal) {
    AllBodies pointed{.Point = '.'};
    AllBodies withComma{.Point = ','};
    std::optional<NumberParts> first;
    bool areAlike = true;
    for (const std::string& text : texts) {
        const NumberParts parts = PartsOf(text);
        if (!IsNumberInSomeWay(parts.Body, decimal)) {
            return {};
        }
        first = first ? first : parts;
        areAlike = areAlike && parts.IsPercent == first->IsPercent && parts.Currency == first->Currency;
        pointed.Take(parts.Body);
        withComma.Take(parts.Body);
    }
    if (!first) {
        return {};
    }
    const NumberNotation signs{.IsPercent = first->IsPercent, .Currency = first->Currency};
    return areAlike ? Finding(pointed, withComma, signs, decimal) : FoundNotation{.Finding = NotationFinding::Mixed};
}

std::optional<double> ReadInNotation(std::string_view text, const NumberNotation& notation) {
    const NumberParts parts = PartsOf(text);
    if (parts.IsPercent != notation.IsPercent || parts.Currency != notation.Currency ||
        !ReadBody(parts.Body, notation.Point).IsNumber) {
        return std::nullopt;
    }
    std::string digits(parts.IsNegative ? 1 : 0, Minus);
    digits += parts.Body;
    std::erase(digits, notation.Point == '.' ? ',' : '.');
    std::ranges::replace(digits, ',', '.');
    const bool hasExponent = digits.find_first_of("eE") != std::string::npos;
    const bool isShifted = parts.IsPercent && !hasExponent;  // rounded once
    const std::optional<double> number = DecimalNumber(isShifted ? digits + "e-2" : digits);
    return number && parts.IsPercent && hasExponent ? *number / 100 : number;
}

}  // namespace quillara
