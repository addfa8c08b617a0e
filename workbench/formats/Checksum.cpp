#include "workbench/formats/Checksum.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace quillara {
namespace {

constexpr std::size_t SumCount = 8;
constexpr std::size_t BlockBytes = SumCount * sizeof(std::uint64_t);

using Sums = std::array<std::uint64_t, SumCount>;

std::uint64_t SumWith(std::uint64_t sum, std::uint64_t word) {
    return std::rotl(sum ^ word, 29) * 0x9E3779B97F4A7C15U;
}

void AddBlock(Sums& sums, const char* bytes) {
    static_assert(std::endian::native == std::endian::little);
    Sums words;
    std::memcpy(words.data(), bytes, BlockBytes);
    for (std::size_t i = 0; i < SumCount; ++i) {
        sums[i] = SumWith(sums[i], words[i]);
    }
}

}  // namespace

std::uint64_t ChecksumOf(std::string_view bytes) {
    Sums sums = {1, 2, 3, 4, 5, 6, 7, 8};
    const std::size_t whole = bytes.size() / BlockBytes * BlockBytes;
    for (std::size_t place = 0; place < whole; place += BlockBytes) {
        AddBlock(sums, bytes.data() + place);
    }
    if (whole < bytes.size()) {
        std::array<char, BlockBytes> last{};
        std::ranges::copy(bytes.substr(whole), last.begin());
        AddBlock(sums, last.data());
    }
    std::uint64_t result = 9;
    for (const std::uint64_t sum : sums) {
        result = SumWith(result, sum);
    }
    result = SumWith(result, bytes.size());
    return result ^ result >> 32;
}

}  // namespace quillara
