#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillara {

/// Distinct numbers, bit for bit, numbered from 0 in the order in which they were met, as long as that saves memory.
class NumberCodes {
  public:
    static constexpr std::size_t MostCodes = 65536;

    /// At most so many distinct numbers are kept.
    explicit NumberCodes(std::size_t most = MostCodes) : Most(most) {}

    /// The code of each number. False when there are too many distinct ones; no code is given then, nor ever after.
    [[nodiscard]] bool Encode(std::span<const double> numbers, std::vector<std::uint16_t>& codes);

    /// Whether codes may still have a byte each.
    [[nodiscard]] bool MayFitByte() const;

    /// The number of each code; some may stand for none of the numbers that have codes.
    [[nodiscard]] const std::vector<double>& Numbers() const { return Known; }

  private:
    /// The code of a number; Most: it's one too many.
    std::size_t CodeOf(double number);
    void Grow();
    void GiveUp();

    std::size_t Most;
    bool HasGivenUp = false;
    std::size_t Seen = 0;
    std::vector<std::uint32_t>
        Slots;  // 0: free; else 1 more than a code; as many as a power of two, at most half taken
    std::vector<double> Known;
};

}  // namespace quillara
