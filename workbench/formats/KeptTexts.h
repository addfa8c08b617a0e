#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace quillara {

/// Many short texts in few blocks of memory.
class KeptTexts {
  public:
    /// A copy of a text that stays where it is as long as this lives; RoomBehindDecimal bytes behind it can be read.
    [[nodiscard]] std::string_view Keep(std::string_view text);

  private:
    std::vector<std::unique_ptr<char[]>> Blocks;
    char* BlockEnd = nullptr;
    std::size_t RoomInBlock = 0;
};

}  // namespace quillara
