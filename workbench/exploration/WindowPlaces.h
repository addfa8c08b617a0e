#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace quillara {

/// Where a window stands in its area, in pixels.
struct WindowPlace {
    int X = 0;
    int Y = 0;
    int Width = 0;
    int Height = 0;
};

/// How windows stand, to be taken up again.
struct WindowArrangement {
    bool AreTiled = false;
    bool AreTabs = false;
    std::vector<WindowPlace> Places{};  ///< of each document; without a width: left to the desktop
    std::optional<std::size_t> Front{};  ///< the place of the document in front; nothing: none is
};

struct WindowSize {
    int Width = 0;
    int Height = 0;
};

/// Places for so many windows side by side that fill an area, row by row; the rows are as high as each other, and the
/// windows of a last row that has fewer are wider. They are a third wider than high, or as near to it as fills the
/// area. Where they would be smaller than `least` they go on below the area.
[[nodiscard]] std::vector<WindowPlace> TiledPlaces(std::size_t windows, WindowSize area, WindowSize least = {});

/// A place for a window of a size that covers none of the others, the highest and then the leftmost; where there is
/// none, the one of several that hides least of them. It lies within the area, and is smaller than asked for only where
/// the area is.
[[nodiscard]] WindowPlace FreePlace(const std::vector<WindowPlace>& others, WindowSize wanted, WindowSize area);

}  // namespace quillara
