#pragma once

#include <cstdint>
#include <string_view>

namespace quillara {

/// A number that tells a damaged text of bytes from the sound one: any change within one aligned word of 8 bytes
/// changes it, and of other changes one in 2^64 goes unnoticed. It guards against accidents, not against intent.
///
/// The bytes, filled up with zeros to a multiple of 64, are taken as words of 64 bits, low byte first, by turns into
/// eight sums of their own. A word goes into its sum by sum = rotate(sum ^ word, 29 bits to the left) * C, with C =
/// 0x9E3779B97F4A7C15 and sums that begin with 1, 2, ..., 8. In the end the sums and the number of bytes go into a
/// ninth, which begins with 9, the same way; the result is that ninth ^ (that ninth >> 32).
[[nodiscard]] std::uint64_t ChecksumOf(std::string_view bytes);

}  // namespace quillara
