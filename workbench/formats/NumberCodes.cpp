#include "workbench/formats/NumberCodes.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace quillara {
namespace {

constexpr std::size_t FirstNumberSlots = 64;

/// The whole numbers that are found without a search where there is room for it.
constexpr int LeastSmallWhole = -32768;
constexpr int SmallWholes = 65536;

/// Where nearly every number is a new one, most further ones are too.
constexpr std::size_t EnoughToJudgeBy = 8192;

std::size_t SlotOf(double number, std::size_t slots) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>((bits ^ bits >> 32) * 0x9E3779B97F4A7C15U >> 32) & (slots - 1);
}

bool HasSameBits(double number, double other) {
    return std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(other);
}

}  // namespace

// Days and other whole numbers are found by themselves, which is some times quicker.
inline std::size_t NumberCodes::CodeOf(double number) {
    if (!(number > LeastSmallWhole - 1 && number < LeastSmallWhole + SmallWholes)) {
        return SearchedCode(number);
    }
    const auto whole = static_cast<int>(number);
    if (!HasSameBits(number, whole)) {
        return SearchedCode(number);
    }
    if (OfSmallWhole.empty()) {
        OfSmallWhole.resize(Most == MostCodes ? SmallWholes : 1);
    }
    const auto place = OfSmallWhole.size() == 1 ? 0 : static_cast<std::size_t>(whole - LeastSmallWhole);
    std::uint16_t& known = OfSmallWhole[place];
    if (known != 0) {
        return known - 1U;
    }
    const std::size_t code = SearchedCode(number);
    const bool isKept = OfSmallWhole.size() > 1 && code < std::numeric_limits<std::uint16_t>::max() && code != Most;
    known = isKept ? static_cast<std::uint16_t>(code + 1) : std::uint16_t{0};
    return code;
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
    if (Seen >= EnoughToJudgeBy && 20 * Known.size() > 19 * Seen) {
        GiveUp();
    }
    return true;
}

std::size_t NumberCodes::SearchedCode(double number) {
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
    OfSmallWhole = {};
}

}  // namespace quillara
