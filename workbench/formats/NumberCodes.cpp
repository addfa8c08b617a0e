#include "workbench/formats/NumberCodes.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace quillara {
namespace {

constexpr std::size_t FirstNumberSlots = 64;

constexpr std::size_t EnoughToJudgeBy = 2048;
constexpr std::size_t CodesOfOneByte = 256;

std::size_t SlotOf(double number, std::size_t slots) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>((bits ^ bits >> 32) * 0x9E3779B97F4A7C15U >> 32) & (slots - 1);
}

/// Whether so many distinct numbers of so many let expect that there are too many in all. Of 80,000 equally frequent
/// ones n draws are expected to meet 80,000 (1 - exp(-n / 80,000)).
bool TooManyAreNew(std::size_t distinct, std::size_t seen) {
    constexpr double tooMany = 80000;
    return seen >= EnoughToJudgeBy &&
           static_cast<double>(distinct) > -tooMany * std::expm1(-static_cast<double>(seen) / tooMany);
}

bool HasSameBits(double number, double other) {
    return std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(other);
}

}  // namespace

bool NumberCodes::MayFitByte() const {
    return !HasGivenUp && Known.size() <= CodesOfOneByte;
}

bool NumberCodes::Encode(std::span<const double> numbers, std::vector<std::uint16_t>& codes) {
    if (HasGivenUp) {
        return false;
    }
    codes.resize(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t code = CodeOf(numbers[i]);
        if (code == Most) {
            GiveUp();
            return false;
        }
        codes[i] = static_cast<std::uint16_t>(code);
    }
    Seen += numbers.size();
    if (TooManyAreNew(Known.size(), Seen)) {
        GiveUp();
    }
    return true;
}

std::size_t NumberCodes::CodeOf(double number) {
    if (2 * Known.size() >= Slots.size()) {
        Grow();
    }
    const std::size_t mask = Slots.size() - 1;
    std::size_t place = SlotOf(number, Slots.size());
    for (; Slots[place] != 0; place = (place + 1) & mask) {
        if (HasSameBits(Known[Slots[place] - 1], number)) {
            return Slots[place] - 1;
        }
    }
    if (Known.size() == Most) {
        return Most;
    }
    Known.push_back(number);
    Slots[place] = static_cast<std::uint32_t>(Known.size());
    return Known.size() - 1;
}

void NumberCodes::Grow() {
    std::vector<std::uint32_t> grown(std::max(FirstNumberSlots, 2 * Slots.size()));
    for (std::size_t code = 0; code < Known.size(); ++code) {
        std::size_t place = SlotOf(Known[code], grown.size());
        while (grown[place] != 0) {
            place = (place + 1) & (grown.size() - 1);
        }
        grown[place] = static_cast<std::uint32_t>(code + 1);
    }
    Slots = std::move(grown);
}

void NumberCodes::GiveUp() {
    HasGivenUp = true;
    Slots = {};
}

}  // namespace quillara
