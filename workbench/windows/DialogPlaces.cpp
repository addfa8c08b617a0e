#include "workbench/windows/DialogPlaces.h"

#include <algorithm>
#include <cstddef>

namespace quillara {
namespace {

struct Run {
    int From = 0;
    int To = 0;
};

std::size_t At(int unit) {
    return static_cast<std::size_t>(unit);
}

bool StandsAcross(const ControlExtent& extent, int unit) {
    return extent.From <= unit && unit < extent.To;
}

bool MayGrow(std::span<const ControlExtent> extents, int unit) {
    bool hasSome = false;
    for (const ControlExtent& extent : extents) {
        if (StandsAcross(extent, unit)) {
            if (!extent.Grows) {
                return false;
            }
            hasSome = true;
        }
    }
    return hasSome;
}

Run LongestThatGrows(std::span<const ControlExtent> extents, int length) {
    Run longest;
    Run present;
    for (int unit = 0; unit < length; ++unit) {
        present = MayGrow(extents, unit) ? Run{present.From, unit + 1} : Run{unit + 1, unit + 1};
        if (present.To - present.From > longest.To - longest.From) {
            longest = present;
        }
    }
    return longest;
}

}  // namespace

std::vector<double> PlacesAlong(std::span<const ControlExtent> extents, int length, double scale) {
    std::vector<double> places(At(length) + 1);
    for (int unit = 1; unit <= length; ++unit) {
        double& place = places[At(unit)];
        place = places[At(unit) - 1] + scale;
        for (const ControlExtent& extent : extents) {
            if (extent.To == unit) {
                place = std::max(place, places[At(extent.From)] + extent.Least);
            }
        }
    }
    return places;
}

void SpreadOver(std::vector<double>& places, double room) {
    const double factor = places.back() > 0 ? std::max(room / places.back(), 1.0) : 1.0;
    for (double& place : places) {
        place *= factor;
    }
}

void GrowInto(std::vector<double>& places, std::span<const ControlExtent> extents, double room, int shortest) {
    const double left = room - places.back();
    const Run run = LongestThatGrows(extents, static_cast<int>(places.size()) - 1);
    if (left <= 0 || run.To - run.From < shortest) {
        return;
    }
    for (std::size_t unit = At(run.To); unit < places.size(); ++unit) {
        places[unit] += left;
    }
}

}  // namespace quillara
