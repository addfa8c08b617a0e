#include "workbench/formats/ColumnGatherer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "workbench/data/DayNumber.h"
#include "workbench/formats/LeadingZeros.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/ShortDecimal.h"

namespace quillara {
namespace {

constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// Puts the numbers as whole ones of 32 bits into `whole`; false when one is none.
bool MakeWhole(std::span<const double> numbers, std::vector<std::int32_t>& whole) {
    whole.resize(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double number = numbers[i];
        const bool isWithin = std::abs(number) <= std::numeric_limits<std::int32_t>::max();
        whole[i] = isWithin ? static_cast<std::int32_t>(number) : MissingWhole;
        const bool isSame = isWithin && number == whole[i] && (number != 0 || !std::signbit(number));
        if (!isSame && !std::isnan(number)) {
            return false;
        }
    }
    return true;
}

/// The least and the greatest of whole numbers; of none that isn't missing the first is above the second.
std::pair<std::int32_t, std::int32_t> RangeOf(std::span<const std::int32_t> whole) {
    std::int32_t least = std::numeric_limits<std::int32_t>::max();
    std::int32_t greatest = MissingWhole;
    for (const std::int32_t number : whole) {
        least = std::min(least, number == MissingWhole ? least : number);
        greatest = std::max(greatest, number);
    }
    return {least, greatest};
}

template <typename Step>
WholeSteps<Step> StepsFrom(std::int32_t base, std::span<const std::int32_t> whole) {
    WholeSteps<Step> steps{.Base = base, .Steps = std::vector<Step>(whole.size())};
    for (std::size_t i = 0; i < whole.size(); ++i) {
        steps.Steps[i] = static_cast<Step>(whole[i] == MissingWhole ? 0 : whole[i] - base);
    }
    return steps;
}

}  // namespace

bool ColumnGatherer::Take(const FieldRun& run, std::size_t variable) {
    switch (Kind) {
        case FieldKind::Number:
            return TakeNumbers(run, variable);
        case FieldKind::Date:
            return TakeDates(run, variable);
        case FieldKind::DateTime:
            return TakeDateTimes(run, variable);
        case FieldKind::Text:
            for (std::size_t record = 0; record < run.Records(); ++record) {
                TakeText(run.At(record, variable));
            }
            break;
        case FieldKind::PassedOver:
            break;
    }
    return true;
}

bool ColumnGatherer::TakeNumbers(const FieldRun& run, std::size_t variable) {
    const std::size_t before = Values.size();
    Values.resize(before + run.Records(), NoValue);
    double* const values = Values.data() + before;
    const char decimal = Rules->Decimal();
    const bool valuesMayBeMissing = Rules->ValuesMayBeMissing();
    for (std::size_t record = 0; record < run.Records(); ++record) {
        const std::string_view field = run.At(record, variable);
        MetLeadingZero = MetLeadingZero || BeginsWithSpareZero(field);
        const bool isUsual = !valuesMayBeMissing && (field.empty() || ReadShortDecimal(field, decimal, values[record]));
        if (!isUsual && !TakeUnusual(field, run.Places[record], values[record])) {
            return false;
        }
    }
    return true;
}

/// Takes a field that isn't a short number.
bool ColumnGatherer::TakeUnusual(std::string_view field, std::size_t place, double& value) {
    if (Rules->ValuesMayBeMissing() && Rules->IsMissing(field)) {
        return true;
    }
    const DecimalOutcome outcome = ReadDecimal(field, Rules->Decimal(), value);
    if (outcome == DecimalOutcome::TooLarge && !Large) {
        Large = {place, std::string(field)};
    }
    return outcome != DecimalOutcome::NoNumber || Rules->IsMissing(field);
}

bool ColumnGatherer::TakeDates(const FieldRun& run, std::size_t variable) {
    const bool valuesMayBeMissing = Rules->ValuesMayBeMissing();
    const std::size_t before = Whole.size();
    Whole.resize(before + run.Records(), MissingWhole);
    for (std::size_t record = 0; record < run.Records(); ++record) {
        const std::string_view field = run.At(record, variable);
        if (field.empty() || (valuesMayBeMissing && Rules->IsMissing(field))) {
            continue;
        }
        const std::int32_t day = DayNumber(field);
        if (day == NoDay && !Rules->IsMissing(field)) {
            return false;
        }
        Whole[before + record] = day == NoDay ? MissingWhole : day;
    }
    return true;
}

/// A day without a time among them is the midnight that it begins with.
bool ColumnGatherer::TakeDateTimes(const FieldRun& run, std::size_t variable) {
    const bool valuesMayBeMissing = Rules->ValuesMayBeMissing();
    for (std::size_t record = 0; record < run.Records(); ++record) {
        const std::string_view field = run.At(record, variable);
        const bool isGap = field.empty() || (valuesMayBeMissing && Rules->IsMissing(field));
        const std::optional<WrittenDateTime> read = isGap ? std::nullopt : ReadDateTime(field);
        const std::int32_t day = isGap || read ? NoDay : DayNumber(field);
        if (!isGap && !read && day == NoDay && !Rules->IsMissing(field)) {
            return false;
        }
        if (read) {
            ZonesOfTimes.Add(read->Zone);
        }
        Values.push_back(read ? read->Seconds : day == NoDay ? NoValue : day * SecondsOfDay);
    }
    return true;
}

void ColumnGatherer::TakeText(std::string_view field) {
    if (field.empty()) {
        TextNumbers.push_back(0);
        return;
    }
    const std::uint32_t code = TextsMet.CodeOf(field);
    if (code == IsMissingText.size()) {
        IsMissingText.push_back(Rules->IsMissing(field));
    }
    TextNumbers.push_back(IsMissingText[code] ? 0 : code + 1);
}

void ColumnGatherer::PassOver() {
    *this = ColumnGatherer(FieldKind::PassedOver, *Rules, 0);
}

void ColumnGatherer::Close() {
    Values = {};
    Whole = {};
    TextNumbers = {};
    IsMissingText = {};
    TextsMet.Close();
}

ColumnPiece ColumnGatherer::Finish() {
    ColumnPiece piece;
    switch (Kind) {
        case FieldKind::Number:
        case FieldKind::DateTime:
            piece = MakeWhole(Values, Whole) ? FinishWhole() : FinishNumbers();
            break;
        case FieldKind::Date:
            piece = FinishWhole();
            break;
        case FieldKind::Text:
            piece = FinishTexts();
            break;
        case FieldKind::PassedOver:
            break;
    }
    TextNumbers.clear();
    Values.clear();
    Whole.clear();
    return piece;
}

ColumnPiece ColumnGatherer::FinishTexts() const {
    const std::span<const std::uint32_t> numbers = TextNumbers;
    const std::size_t texts = TextsMet.Texts().size();
    if (texts <= std::numeric_limits<std::uint8_t>::max()) {
        return {.Entries = Narrowed<std::uint8_t>(numbers)};
    }
    if (texts <= std::numeric_limits<std::uint16_t>::max()) {
        return {.Entries = Narrowed<std::uint16_t>(numbers)};
    }
    return {.Entries = TextNumbers};
}

/// Steps from the least are found without a search for codes, but codes may be narrower.
ColumnPiece ColumnGatherer::FinishWhole() {
    const auto [least, greatest] = RangeOf(Whole);
    const std::int64_t base = std::int64_t{least} - 1;
    const std::int64_t largestStep = least > greatest ? 0 : greatest - base;
    if (largestStep <= std::numeric_limits<std::uint8_t>::max()) {
        return {.Entries = StepsFrom<std::uint8_t>(static_cast<std::int32_t>(base), Whole)};
    }
    if (largestStep <= std::numeric_limits<std::uint16_t>::max() && !NumbersMet.MayFitByte()) {
        return {.Entries = StepsFrom<std::uint16_t>(static_cast<std::int32_t>(base), Whole)};
    }
    Values.resize(Whole.size());
    std::ranges::transform(Whole, Values.begin(),
                           [](std::int32_t number) { return number == MissingWhole ? NoValue : number; });
    std::optional<ColumnPiece> codes = FinishCodes();
    return codes ? std::move(*codes) : ColumnPiece{.Entries = Whole};
}

ColumnPiece ColumnGatherer::FinishNumbers() {
    std::optional<ColumnPiece> codes = FinishCodes();
    return codes ? std::move(*codes) : ColumnPiece{.Entries = Values};
}

std::optional<ColumnPiece> ColumnGatherer::FinishCodes() {
    std::vector<std::uint16_t> codes;
    if (!NumbersMet.Encode(Values, codes)) {
        return {};
    }
    if (NumbersMet.Numbers().size() <= 1U + std::numeric_limits<std::uint8_t>::max()) {
        return ColumnPiece{.Entries = Narrowed<std::uint8_t>(std::span<const std::uint16_t>(codes))};
    }
    return ColumnPiece{.Entries = std::move(codes)};
}

}  // namespace quillara
