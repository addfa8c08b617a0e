#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/formats/KeptTexts.h"

namespace quillara {

/// Distinct texts, numbered from 0 in the order in which they were met.
class TextCodes {
  public:
    /// The number of a text; a new one is kept.
    std::uint32_t CodeOf(std::string_view text);

    /// No more texts come: what only they need is freed.
    void Close() { Slots = {}; }

    [[nodiscard]] const std::vector<std::string_view>& Texts() const { return Known; }

  private:
    struct Slot {
        std::uint32_t Hash = 0;
        std::uint32_t Number = 0;  // 0: free; else 1 more than the code
    };

    std::uint32_t Add(std::string_view text, std::uint32_t hash);
    void Grow();

    std::vector<Slot> Slots;  // as many as a power of two, at most half of them taken
    std::vector<std::string_view> Known;
    KeptTexts Bytes;  // what Known refers to
};

}  // namespace quillara
