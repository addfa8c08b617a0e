#include "workbench/formats/NumberNotation.h"

#include <algorithm>
#include <array>

#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr auto Currencies =
    std::to_array<std::string_view>({"$", "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5", "EUR", "USD", "GBP", "CHF"});
constexpr char Plus = '+';
constexpr char Minus = '-';
constexpr char Blank = ' ';
constexpr char Apostrophe = '\'';

struct OtherForm {
    std::string_view Form;
    char Plain;
};

// clang-format off
constexpr std::array<OtherForm, 5> OtherForms{{
    {"\xC2\xA0",     Blank},       // no-break
    {"\xE2\x80\xAF", Blank},       // narrow no-break
    {"\xE2\x80\x89", Blank},       // thin
    {"\xE2\x80\x99", Apostrophe},  // curly
    {"\xE2\x88\x92", Minus},       // as long as a plus
}};
// clang-format on

/// A text with the signs of one meaning in one form.
std::string Unified(std::string_view text) {
    std::string unified(text);
    const bool isAscii = std::ranges::none_of(text, [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
    for (const OtherForm& other : OtherForms) {
        for (std::size_t at = 0; !isAscii && (at = unified.find(other.Form, at)) != std::string::npos; ++at) {
            unified.replace(at, other.Form.size(), 1, other.Plain);
        }
    }
    return unified;
}

/// A text taken apart: -$1,234.5 %
struct NumberParts {
    bool IsNegative = false;
    bool IsPercent = false;
    std::string_view Currency{};
    std::string_view Body{};  // without signs: digits and what stands between them where it is a number
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
    while (text.starts_with(Blank)) {
        text.remove_prefix(1);
    }
    while (text.ends_with(Blank)) {
        text.remove_suffix(1);
    }
}

/// Whether there was a sign: -5, +5, 5.0- or (5.0). Without decimals, groups or a currency "5-" may be a grade, and
/// "(5)" an item.
bool TakeSign(NumberParts& parts) {
    constexpr std::string_view signsOfAmounts = ".,$\xC2\xE2";
    std::string_view& body = parts.Body;
    Trim(body);
    const bool isAmount = body.find_first_of(signsOfAmounts) != std::string_view::npos;
    const bool isInBrackets = isAmount && body.front() == '(' && body.back() == ')';
    if (isInBrackets || (isAmount && body.ends_with(Minus))) {
        body.remove_suffix(1);
        body.remove_prefix(isInBrackets ? 1 : 0);
        parts.IsNegative = true;
        return true;
    }
    if (body.starts_with(Minus) || body.starts_with(Plus)) {
        parts.IsNegative = body.front() == Minus;
        body.remove_prefix(1);
        return true;
    }
    return false;
}

/// The views are of the text, which must be unified.
NumberParts PartsOf(std::string_view text) {
    NumberParts parts{.Body = text};
    const bool hasSign = TakeSign(parts);
    Trim(parts.Body);
    for (const std::string_view currency : Currencies) {
        if (parts.Currency.empty() && TakeAway(parts.Body, currency)) {
            parts.Currency = currency;
        }
    }
    Trim(parts.Body);
    if (parts.Body.ends_with('%')) {
        parts.IsPercent = true;
        parts.Body.remove_suffix(1);
    }
    if (!hasSign) {
        TakeSign(parts);  // $-5
    }
    Trim(parts.Body);
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
    char Thousands = '\0';
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

char OtherThan(char point) {
    return point == '.' ? ',' : '.';
}

BodyReading ReadBody(std::string_view body, char point) {
    constexpr std::size_t longestGroup = 3;
    const std::size_t place = body.find(point);
    const std::string_view whole = body.substr(0, place);
    const bool hasDecimals = place != std::string_view::npos;
    for (const char between : {OtherThan(point), Blank, Apostrophe}) {
        if (HasGroups(whole, between)) {
            return {.IsNumber = !hasDecimals || AreDigits(body.substr(place + 1)), .Thousands = between};
        }
    }
    double value = 0;
    return {.IsNumber = ReadDecimal(body, point, value) == DecimalOutcome::Number,
            .HasLongWhole = LeadingDigits(whole) > longestGroup};
}

/// What all bodies are with one of point and comma before decimals.
struct AllBodies {
    char Point = '.';
    bool AreNumbers = true;
    char Thousands = '\0';
    bool HaveLongWhole = false;
    bool HaveDecimalComma = false;

    void Take(std::string_view body) {
        const BodyReading reading = ReadBody(body, Point);
        const bool isOther = Thousands != '\0' && reading.Thousands != '\0' && Thousands != reading.Thousands;
        AreNumbers = AreNumbers && reading.IsNumber && !isOther;
        Thousands = std::max(Thousands, reading.Thousands);
        HaveLongWhole = HaveLongWhole || reading.HasLongWhole;
        HaveDecimalComma = HaveDecimalComma || (Point == ',' && body.find(',') != std::string_view::npos);
    }
    /// A point or comma between some thousands only may as well stand before decimals.
    [[nodiscard]] bool IsOneWay() const { return AreNumbers && !(Thousands == OtherThan(Point) && HaveLongWhole); }
};

bool IsNumberInSomeWay(std::string_view body, char decimal) {
    return ReadBody(body, ',').IsNumber || (decimal == '.' && ReadBody(body, '.').IsNumber);
}

FoundNotation Finding(const AllBodies& pointed, const AllBodies& withComma, const NumberNotation& signs, char decimal) {
    NumberNotation notation = signs;
    const bool isPointed = decimal == '.' && pointed.IsOneWay();
    const bool canHaveComma =
        withComma.IsOneWay() && (decimal == ',' || withComma.HaveDecimalComma || withComma.Thousands != '\0');
    if (!isPointed && !canHaveComma) {
        return {.Finding = NotationFinding::Mixed};
    }
    notation.Point = isPointed ? '.' : ',';
    notation.Thousands = isPointed ? pointed.Thousands : withComma.Thousands;
    // Points alone are decimals, as in plain numbers.
    const bool isUnsure = isPointed && canHaveComma && withComma.HaveDecimalComma;
    return {.Finding = isUnsure ? NotationFinding::Unsure : NotationFinding::Certain, .Notation = notation};
}

}  // namespace

FoundNotation FindNotation(const std::vector<std::string>& texts, char decimal) {
    AllBodies pointed{.Point = '.'};
    AllBodies withComma{.Point = ','};
    std::optional<NumberNotation> signs;
    bool areAlike = true;
    bool arePlain = true;
    for (const std::string& text : texts) {
        const std::string unified = Unified(text);
        const NumberParts parts = PartsOf(unified);
        if (!IsNumberInSomeWay(parts.Body, decimal)) {
            return {};
        }
        const NumberNotation own{.IsPercent = parts.IsPercent, .Currency = parts.Currency};
        signs = signs ? signs : own;
        areAlike = areAlike && own == *signs;
        double value = 0;
        arePlain = arePlain && decimal == '.' && ReadDecimal(text, '.', value) == DecimalOutcome::Number;
        pointed.Take(parts.Body);
        withComma.Take(parts.Body);
    }
    if (!signs || arePlain) {
        return {};
    }
    return areAlike ? Finding(pointed, withComma, *signs, decimal) : FoundNotation{.Finding = NotationFinding::Mixed};
}

PointUse PointUseOf(std::string_view text) {
    const NumberParts parts = PartsOf(text);
    if (parts.Body.find('.') == std::string_view::npos) {
        return PointUse::None;
    }
    return HasGroups(parts.Body, '.') ? PointUse::MayGroup : PointUse::Decimal;
}

std::optional<double> ReadInNotation(std::string_view text, const NumberNotation& notation) {
    const std::string unified = Unified(text);
    const NumberParts parts = PartsOf(unified);
    const BodyReading reading = ReadBody(parts.Body, notation.Point);
    const bool hasOtherGroups = reading.Thousands != '\0' && reading.Thousands != notation.Thousands;
    if (parts.IsPercent != notation.IsPercent || parts.Currency != notation.Currency || !reading.IsNumber ||
        hasOtherGroups) {
        return std::nullopt;
    }
    std::string digits(parts.IsNegative ? 1 : 0, Minus);
    digits += parts.Body;
    std::erase(digits, notation.Thousands);
    std::ranges::replace(digits, ',', '.');
    const bool hasExponent = digits.find_first_of("eE") != std::string::npos;
    const bool isShifted = parts.IsPercent && !hasExponent;  // rounded once
    const std::optional<double> number = DecimalNumber(isShifted ? digits + "e-2" : digits);
    return number && parts.IsPercent && hasExponent ? *number / 100 : number;
}

}  // namespace quillara
