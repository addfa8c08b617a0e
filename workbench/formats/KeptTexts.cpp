#include "workbench/formats/KeptTexts.h"

#include <algorithm>

#include "workbench/numbers/ShortDecimal.h"

namespace quillara {
namespace {

constexpr std::size_t FirstBlock = 256;
constexpr std::size_t LargestBlock = 1 << 20;

}  // namespace

std::string_view KeptTexts::Keep(std::string_view text) {
    if (text.size() + RoomBehindDecimal > RoomInBlock || Blocks.empty()) {
        const std::size_t wanted = std::min(LargestBlock, FirstBlock << std::min<std::size_t>(Blocks.size(), 12));
        RoomInBlock = std::max(text.size() + RoomBehindDecimal, wanted);
        Blocks.push_back(std::make_unique<char[]>(RoomInBlock));
        BlockEnd = Blocks.back().get() + RoomInBlock;
    }
    char* place = BlockEnd - RoomInBlock;
    std::ranges::copy(text, place);
    RoomInBlock -= text.size();
    return {place, text.size()};
}

}  // namespace quillara
