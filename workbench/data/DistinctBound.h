#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillara {

/// Counts distinct values, bit by bit, from below: of those that fall on the same one of 2^20 places one counts. Some
/// times quicker than looking each up.
class DistinctBound {
  public:
    void Add(std::span<const double> values) {
        for (const double value : values) {
            constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;  // 2^64 / golden ratio
            const auto bits = std::bit_cast<std::uint64_t>(value);
            const std::uint64_t place = (bits ^ bits >> 32) * spread >> (64 - PlaceBits);
            std::uint64_t& word = Taken[place / 64];
            Found += 1 - (word >> place % 64 & 1);
            word |= std::uint64_t{1} << place % 64;
        }
    }
    /// There are at least so many.
    [[nodiscard]] std::size_t AtLeast() const { return Found; }

  private:
    static constexpr unsigned PlaceBits = 20;

    std::vector<std::uint64_t> Taken = std::vector<std::uint64_t>((std::size_t{1} << PlaceBits) / 64);
    std::size_t Found = 0;
};

}  // namespace quillara
