#include "workbench/formats/ParquetMoments.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

#include "workbench/data/DateTimes.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

// clang-format off
constexpr auto MomentTypes = std::to_array<MomentType>({
    // Name                       Kind                  Bytes  Units of a second  UTC
    {"DATE",                      ValueKind::Date,       4,    1,                 false},
    {"TIME",                      ValueKind::TimeOfDay,  8,    1'000'000,         false},
    {"TIME_NS",                   ValueKind::TimeOfDay,  8,    1'000'000'000,     false},
    {"TIMESTAMP_S",               ValueKind::DateTime,   8,    1,                 false},
    {"TIMESTAMP_MS",              ValueKind::DateTime,   8,    1'000,             false},
    {"TIMESTAMP",                 ValueKind::DateTime,   8,    1'000'000,         false},
    {"TIMESTAMP_NS",              ValueKind::DateTime,   8,    1'000'000'000,     false},
    {"TIMESTAMP WITH TIME ZONE",  ValueKind::DateTime,   8,    1'000'000,         true},
});
// clang-format on

constexpr std::int64_t FirstDay = -719162;  // 0001-01-01
constexpr std::int64_t BehindLastDay = 2932897;  // 10000-01-01
constexpr std::int64_t Milliseconds = 1'000;  // of a second
constexpr std::int64_t Microseconds = 1'000'000;

std::int64_t NumberIn(const void* place, std::size_t bytes) {
    if (bytes == sizeof(std::int32_t)) {
        std::int32_t number = 0;
        std::memcpy(&number, place, sizeof number);
        return number;
    }
    std::int64_t number = 0;
    std::memcpy(&number, place, sizeof number);
    return number;
}

/// Rounded down.
std::int64_t Quotient(std::int64_t number, std::int64_t divisor) {
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

/// Whether a double tells whole seconds and a rest of smaller units apart from their neighbours.
bool IsKept(std::int64_t whole, std::int64_t rest, std::int64_t unitsOfSecond) {
    constexpr std::int64_t farSeconds = std::int64_t{1} << 33;
    const std::int64_t keptUnits = -farSeconds < whole && whole < farSeconds ? Microseconds : Milliseconds;
    return unitsOfSecond <= keptUnits || rest % (unitsOfSecond / keptUnits) == 0;
}

}  // namespace

const MomentType* FindMomentType(std::string_view name) {
    const auto* found = std::ranges::find(MomentTypes, name, &MomentType::Name);
    return found == MomentTypes.end() ? nullptr : found;
}

bool MomentColumn::Append(const void* number) {
    if (number == nullptr) {
        Values.Append(std::numeric_limits<double>::quiet_NaN());
        return true;
    }
    const std::int64_t units = NumberIn(number, Type.Bytes);
    const std::int64_t whole = Quotient(units, Type.UnitsOfSecond);
    const std::int64_t rest = units - whole * Type.UnitsOfSecond;
    // As texts are read: the digits behind the point are put to the whole seconds last, which keeps most of them.
    Values.Append(static_cast<double>(whole) + static_cast<double>(rest) / static_cast<double>(Type.UnitsOfSecond));
    IsRounded = IsRounded || !IsKept(whole, rest, Type.UnitsOfSecond);
    if (Type.Kind == ValueKind::TimeOfDay) {
        return rest == 0;
    }
    const std::int64_t day = Type.Kind == ValueKind::Date ? units : Quotient(whole, std::int64_t{86400});
    return FirstDay <= day && day < BehindLastDay;
}

void MomentColumn::Take(Variable& variable) {
    variable.Kind = Type.Kind;
    variable.Texts.clear();
    EncodeNumbers(variable, std::move(Values));
}

std::optional<Remark> MomentColumn::RemarkOn(const std::string& name) const {
    if (IsRounded) {
        return Remark{"moments-rounded", "The times of " + Quoted(name) +
                                             " have more decimals than are kept here: microseconds from 1697 to 2242, "
                                             "thousandths of a second in other years."};
    }
    if (Type.IsUtc) {
        return Remark{"zones-shifted", "The times of " + Quoted(name) +
                                           " are moments whatever the time zone and are shown in UTC; the file doesn't "
                                           "say where they were taken."};
    }
    return std::nullopt;
}

}  // namespace quillara
