#include "python/ArrowValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

using quillara::ValueKind;

namespace {

constexpr double DaySeconds = 86400;
constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

bool BitAt(const void* bits, std::int64_t place) {
    return ((static_cast<const std::uint8_t*>(bits)[place / 8] >> (place % 8)) & 1) != 0;
}

template <typename Item>
const Item* Buffer(const ArrowArray& array, int place) {
    return static_cast<const Item*>(array.Buffers[place]);
}

void AddGaps(ArrowValues& values, const ArrowArray&, const ArrowKind&, std::int64_t, std::int64_t count) {
    values.Numbers.insert(values.Numbers.end(), static_cast<std::size_t>(count), NoNumber);
}

void AddNumbers(ArrowValues& values, const ArrowArray& array, std::int64_t begin, std::int64_t count, auto numberAt) {
    values.Numbers.reserve(values.Numbers.size() + static_cast<std::size_t>(count));
    for (std::int64_t row = begin; row < begin + count; ++row) {
        values.Numbers.push_back(IsPresent(array, row) ? numberAt(row) : NoNumber);
    }
}

void AddTruths(ArrowValues& values, const ArrowArray& array, const ArrowKind&, std::int64_t begin, std::int64_t count) {
    AddNumbers(values, array, begin, count,
               [bits = array.Buffers[1]](std::int64_t row) { return BitAt(bits, row) ? 1.0 : 0.0; });
}

/// The number as a double, which has room for 53 bits of it.
template <typename Item>
bool IsExact(Item item) {
    constexpr auto limit = std::int64_t{1} << 53;
    if constexpr (sizeof(Item) < sizeof(std::int64_t)) {
        return true;
    } else {
        return std::cmp_less_equal(item, limit) && std::cmp_greater_equal(item, -limit);
    }
}

template <typename Item>
void AddWhole(ArrowValues& values, const ArrowArray& array, const ArrowKind& kind, std::int64_t begin,
              std::int64_t count) {
    AddNumbers(values, array, begin, count, [&, items = Buffer<Item>(array, 1)](std::int64_t row) {
        values.AreRounded = values.AreRounded || (kind.Kind == ValueKind::Number && !IsExact(items[row]));
        return static_cast<double>(items[row]) / kind.Unit;
    });
}

/// Whole seconds and the part of one behind them, each exact, so that the sum is the nearest double.
void AddMoments(ArrowValues& values, const ArrowArray& array, const ArrowKind& kind, std::int64_t begin,
                std::int64_t count) {
    const auto unit = static_cast<std::int64_t>(kind.Unit);
    AddNumbers(values, array, begin, count, [unit, items = Buffer<std::int64_t>(array, 1)](std::int64_t row) {
        const std::int64_t rest = items[row] % unit;
        const std::int64_t whole = items[row] / unit - (rest < 0 ? 1 : 0);
        const std::int64_t part = rest < 0 ? rest + unit : rest;
        return static_cast<double>(whole) + static_cast<double>(part) / static_cast<double>(unit);
    });
}

template <typename Item>
void AddReal(ArrowValues& values, const ArrowArray& array, const ArrowKind&, std::int64_t begin, std::int64_t count) {
    AddNumbers(values, array, begin, count,
               [items = Buffer<Item>(array, 1)](std::int64_t row) { return static_cast<double>(items[row]); });
}

__extension__ using Wide = __int128;

/// The double next to `digits` / 10^scale.
double DecimalNumber(Wide digits, int scale) {
    std::string text;
    for (Wide rest = digits; rest != 0; rest /= 10) {
        text.insert(text.begin(), static_cast<char>('0' + std::abs(static_cast<int>(rest % 10))));
    }
    text = (digits < 0 ? "-0" : "0") + text + 'e' + std::to_string(-scale);
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

template <typename Item>
void AddDecimals(ArrowValues& values, const ArrowArray& array, const ArrowKind& kind, std::int64_t begin,
                 std::int64_t count) {
    AddNumbers(values, array, begin, count, [&, bytes = Buffer<char>(array, 1)](std::int64_t row) {
        Item item;
        std::memcpy(&item, bytes + row * static_cast<std::int64_t>(sizeof(Item)), sizeof(Item));
        return DecimalNumber(item, kind.Scale);
    });
}

void AddTexts(ArrowValues& values, const ArrowArray& array, std::int64_t begin, std::int64_t count, auto textAt) {
    for (std::int64_t row = begin; row < begin + count; ++row) {
        values.Texts.push_back(IsPresent(array, row) ? std::optional<std::string>(textAt(row)) : std::nullopt);
    }
}

template <typename Offset>
void AddTextsByOffsets(ArrowValues& values, const ArrowArray& array, const ArrowKind&, std::int64_t begin,
                       std::int64_t count) {
    const auto* bytes = Buffer<char>(array, 2);
    AddTexts(values, array, begin, count, [bytes, offsets = Buffer<Offset>(array, 1)](std::int64_t row) {
        return std::string(bytes + offsets[row], bytes + offsets[row + 1]);
    });
}

/// Where a text view stands: short ones within the view, longer ones in one of the buffers behind the views.
struct ViewOfText {
    std::int32_t Length;
    char Begin[4];
    std::int32_t Buffer;
    std::int32_t Offset;
};

void AddTextViews(ArrowValues& values, const ArrowArray& array, const ArrowKind&, std::int64_t begin,
                  std::int64_t count) {
    constexpr std::int32_t longestWithin = 12;
    AddTexts(values, array, begin, count, [&, views = Buffer<ViewOfText>(array, 1)](std::int64_t row) {
        const ViewOfText& view = views[row];
        const char* text = view.Length <= longestWithin ? reinterpret_cast<const char*>(&view) + sizeof(view.Length)
                                                        : Buffer<char>(array, 2 + view.Buffer) + view.Offset;
        return std::string(text, text + view.Length);
    });
}

struct FormatRow {
    std::string_view Format;
    ArrowKind Kind;
};

// clang-format off
constexpr FormatRow Formats[] = {
    // format  kind                   truth  unit                scale  reader
    {"n",     {ValueKind::Number,     false, 1,                  0,     AddGaps}},
    {"b",     {ValueKind::Number,     true,  1,                  0,     AddTruths}},
    {"c",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::int8_t>}},
    {"C",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::uint8_t>}},
    {"s",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::int16_t>}},
    {"S",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::uint16_t>}},
    {"i",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::int32_t>}},
    {"I",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::uint32_t>}},
    {"l",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::int64_t>}},
    {"L",     {ValueKind::Number,     false, 1,                  0,     AddWhole<std::uint64_t>}},
    {"f",     {ValueKind::Number,     false, 1,                  0,     AddReal<float>}},
    {"g",     {ValueKind::Number,     false, 1,                  0,     AddReal<double>}},
    {"u",     {ValueKind::Text,       false, 1,                  0,     AddTextsByOffsets<std::int32_t>}},
    {"U",     {ValueKind::Text,       false, 1,                  0,     AddTextsByOffsets<std::int64_t>}},
    {"vu",    {ValueKind::Text,       false, 1,                  0,     AddTextViews}},
    {"tdD",   {ValueKind::Date,       false, 1,                  0,     AddWhole<std::int32_t>}},
    {"tdm",   {ValueKind::Date,       false, DaySeconds * 1e3, 0,     AddWhole<std::int64_t>}},
    {"tss:",  {ValueKind::DateTime,   false, 1,                  0,     AddMoments}},
    {"tsm:",  {ValueKind::DateTime,   false, 1e3,                0,     AddMoments}},
    {"tsu:",  {ValueKind::DateTime,   false, 1e6,                0,     AddMoments}},
    {"tsn:",  {ValueKind::DateTime,   false, 1e9,                0,     AddMoments}},
    {"tts",   {ValueKind::TimeOfDay,  false, 1,                  0,     AddWhole<std::int32_t>}},
    {"ttm",   {ValueKind::TimeOfDay,  false, 1e3,                0,     AddWhole<std::int32_t>}},
    {"ttu",   {ValueKind::TimeOfDay,  false, 1e6,                0,     AddWhole<std::int64_t>}},
    {"ttn",   {ValueKind::TimeOfDay,  false, 1e9,                0,     AddWhole<std::int64_t>}},
    {"tDs",   {ValueKind::TimeOfDay,  false, 1,                  0,     AddWhole<std::int64_t>}},
    {"tDm",   {ValueKind::TimeOfDay,  false, 1e3,                0,     AddWhole<std::int64_t>}},
    {"tDu",   {ValueKind::TimeOfDay,  false, 1e6,                0,     AddWhole<std::int64_t>}},
    {"tDn",   {ValueKind::TimeOfDay,  false, 1e9,                0,     AddWhole<std::int64_t>}},
};
// clang-format on

/// "d:19,10": digits in all, digits behind the point, and the bits of a number where they aren't 128.
std::optional<ArrowKind> DecimalKind(std::string_view format) {
    int numbers[3] = {0, 0, 128};
    const char* end = format.data() + format.size();
    const char* place = format.data() + std::string_view("d").size();
    for (int i = 0; i < 3 && place != end; ++i) {
        const auto read = std::from_chars(place + 1, end, numbers[i]);
        if (read.ec != std::errc()) {
            return std::nullopt;
        }
        place = read.ptr;
    }
    ArrowKind kind{ValueKind::Number, false, 1, numbers[1], nullptr};
    kind.Add = numbers[2] == 128  ? AddDecimals<Wide>
               : numbers[2] == 64 ? AddDecimals<std::int64_t>
               : numbers[2] == 32 ? AddDecimals<std::int32_t>
                                  : nullptr;
    return kind.Add == nullptr ? std::nullopt : std::optional(kind);
}

}  // namespace

std::optional<ArrowKind> ArrowKindOf(std::string_view format) {
    if (format.starts_with("d:")) {
        return DecimalKind(format);
    }
    const auto* found = std::ranges::find(Formats, format, &FormatRow::Format);
    return found == std::end(Formats) ? std::nullopt : std::optional(found->Kind);
}

bool IsPresent(const ArrowArray& array, std::int64_t row) {
    const bool hasBits = array.BufferCount > 0 && array.Buffers[0] != nullptr;
    return array.NullCount == 0 || !hasBits || BitAt(array.Buffers[0], row);
}
