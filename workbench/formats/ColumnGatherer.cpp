#include "workbench/formats/ColumnGatherer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// The numbers as whole ones of 32 bits; empty when one is none.
std::vector<std::int32_t> AsWhole(const std::vector<double>& numbers) {
    std::vector<std::int32_t> whole(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double number = numbers[i];
        const bool isMissing = std::isnan(number);
        const bool isWithin = std::abs(number) <= std::numeric_limits<std::int32_t>::max();
        whole[i] = isWithin ? static_cast<std::int32_t>(number) : MissingWhole;
        const bool isSame = number == whole[i] && (number != 0 || !std::signbit(number));
        if (!isMissing && !isSame) {
            return {};
        }
    }
    return whole;
}

}  // namespace

bool ColumnGatherer::TakeNumber(std::string_view field, std::size_t place) {
    double value = NoValue;
    if (!field.empty() && !(Rules->ValuesMayBeMissing() && Rules->IsMissing(field))) {
        const DecimalOutcome outcome = ReadDecimal(field, Rules->Decimal(), value);
        if (outcome == DecimalOutcome::NoNumber && !Rules->IsMissing(field)) {
            return false;
        }
        if (outcome == DecimalOutcome::TooLarge && !Large) {
            Large = {place, std::string(field)};
        }
    }
    Values.push_back(value);
    return true;
}

bool ColumnGatherer::TakeDate(std::string_view field) {
    double value = NoValue;
    if (!field.empty() && !(Rules->ValuesMayBeMissing() && Rules->IsMissing(field))) {
        value = DaysOrNaN(field);
        if (std::isnan(value) && !Rules->IsMissing(field)) {
            return false;
        }
    }
    Values.push_back(value);
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

ColumnPiece ColumnGatherer::Finish() {
    ColumnPiece piece;
    if (Kind == FieldKind::Text) {
        const std::span<const std::uint32_t> numbers = TextNumbers;
        const std::size_t texts = TextsMet.Texts().size();
        if (texts <= std::numeric_limits<std::uint8_t>::max()) {
            piece.Entries = Narrowed<std::uint8_t>(numbers);
        } else if (texts <= std::numeric_limits<std::uint16_t>::max()) {
            piece.Entries = Narrowed<std::uint16_t>(numbers);
        } else {
            piece.Entries = Narrowed<std::uint32_t>(numbers);
        }
        TextNumbers.clear();
        return piece;
    }
    std::vector<std::uint16_t> codes;
    if (NumbersMet.Encode(Values, codes)) {
        const bool areNarrow = NumbersMet.Numbers().size() <= 1U + std::numeric_limits<std::uint8_t>::max();
        if (areNarrow) {
            piece.Entries = Narrowed<std::uint8_t>(std::span<const std::uint16_t>(codes));
        } else {
            piece.Entries = std::move(codes);
        }
    } else if (std::vector<std::int32_t> whole = AsWhole(Values); !whole.empty()) {
        piece.Entries = std::move(whole);
    } else {
        piece.Entries = Values;
    }
    Values.clear();
    return piece;
}

}  // namespace quillara
