#include "workbench/formats/TextCodes.h"

#include <algorithm>
#include <cstring>

namespace quillara {
namespace {

constexpr std::size_t FirstTextSlots = 64;

template <typename Word>
std::uint64_t WordAt(const char* bytes) {
    Word word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

std::uint64_t Mixed(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 32);
}

/// The last bytes of a text with `length` of them, at most 8; words may overlap. Different bytes of one length give
/// different numbers.
std::uint64_t EndOf(const char* bytes, std::size_t length) {
    if (length >= 4) {
        return WordAt<std::uint32_t>(bytes) << 32 | WordAt<std::uint32_t>(bytes + length - 4);
    }
    const auto at = [&](std::size_t place) { return std::uint64_t{static_cast<unsigned char>(bytes[place])}; };
    return length == 0 ? 0 : at(0) << 16 | at(length / 2) << 8 | at(length - 1);
}

/// Whether 9 to 16 bytes are the same.
bool HaveSameEnds(const char* bytes, const char* others, std::size_t length) {
    return WordAt<std::uint64_t>(bytes) == WordAt<std::uint64_t>(others) &&
           WordAt<std::uint64_t>(bytes + length - 8) == WordAt<std::uint64_t>(others + length - 8);
}

/// Most texts are short: a call to compare them would take longer than the comparison.
bool IsSameText(std::string_view text, std::string_view other) {
    if (text.size() != other.size()) {
        return false;
    }
    if (text.size() <= 8) {
        return EndOf(text.data(), text.size()) == EndOf(other.data(), other.size());
    }
    if (text.size() > 32) {
        return text == other;
    }
    const std::size_t half = text.size() > 16 ? 16 : text.size();
    return HaveSameEnds(text.data(), other.data(), half) &&
           (half == text.size() || HaveSameEnds(text.data() + text.size() - 16, other.data() + text.size() - 16, 16));
}

std::uint32_t HashOf(std::string_view text) {
    std::uint64_t hash = text.size();
    const char* bytes = text.data();
    std::size_t left = text.size();
    for (; left > 8; left -= 8, bytes += 8) {
        hash = Mixed(hash, WordAt<std::uint64_t>(bytes));
    }
    hash = Mixed(hash, EndOf(bytes, left));
    return static_cast<std::uint32_t>(Mixed(hash, hash >> 29));
}

}  // namespace

std::uint32_t TextCodes::CodeOf(std::string_view text) {
    const std::uint32_t hash = HashOf(text);
    if (Slots.empty()) {
        return Add(text, hash);
    }
    const std::size_t mask = Slots.size() - 1;
    for (std::size_t place = hash & mask; Slots[place].Number != 0; place = (place + 1) & mask) {
        const Slot& slot = Slots[place];
        if (slot.Hash == hash && IsSameText(Known[slot.Number - 1], text)) {
            return slot.Number - 1;
        }
    }
    return Add(text, hash);
}

std::uint32_t TextCodes::Add(std::string_view text, std::uint32_t hash) {
    if (2 * Known.size() >= Slots.size()) {
        Grow();
    }
    Known.push_back(Bytes.Keep(text));
    const auto number = static_cast<std::uint32_t>(Known.size());
    const std::size_t mask = Slots.size() - 1;
    std::size_t place = hash & mask;
    while (Slots[place].Number != 0) {
        place = (place + 1) & mask;
    }
    Slots[place] = {hash, number};
    return number - 1;
}

void TextCodes::Grow() {
    std::vector<Slot> grown(std::max(FirstTextSlots, 2 * Slots.size()));
    const std::size_t mask = grown.size() - 1;
    for (const Slot& slot : Slots) {
        std::size_t place = slot.Hash & mask;
        while (slot.Number != 0 && grown[place].Number != 0) {
            place = (place + 1) & mask;
        }
        if (slot.Number != 0) {
            grown[place] = slot;
        }
    }
    Slots = std::move(grown);
}

}  // namespace quillara
