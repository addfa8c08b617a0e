#pragma once

#include <cstddef>
#include <limits>
#include <optional>

namespace quillara {

/// How much memory the program may take while it reads.
class MemoryLimit {
  public:
    static constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();

    /// Nothing: three quarters of the machine's memory, or of what its container may take.
    explicit MemoryLimit(std::optional<std::size_t> bytes = {});

    /// Throws DataError when the program, with as many more bytes, takes more than it may: counted is what it holds of
    /// the machine's memory, swapped out or not. Where the system tells neither, nothing is limited.
    void Require(std::size_t more = 0) const;

  private:
    std::size_t Bytes;
};

}  // namespace quillara
