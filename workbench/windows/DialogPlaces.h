#pragma once

#include <span>
#include <vector>

namespace quillara {

/// What a control takes along one axis of its dialog: from and to in dialog units, and the pixels that it needs there.
struct ControlExtent {
    int From = 0;
    int To = 0;
    double Least = 0;
    bool Grows = false;  ///< takes room that is left over
};

/// The pixel at which each dialog unit of an axis begins, with the end of the last: `length` + 1 places. A unit
/// measures `scale` pixels at least; where a control needs more, everything behind it moves on. So what stands in line
/// stays in line, and nothing comes to lie on another that doesn't in units.
[[nodiscard]] std::vector<double> PlacesAlong(std::span<const ControlExtent> extents, int length, double scale);

/// Spreads places over more room, all in proportion; less room changes nothing.
void SpreadOver(std::vector<double>& places, double room);
/// Gives what room is left to the longest run of units that only controls which grow stand across; nothing happens when
/// there is none of at least `shortest` units.
void GrowInto(std::vector<double>& places, std::span<const ControlExtent> extents, double room, int shortest);

}  // namespace quillara
