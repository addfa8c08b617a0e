#pragma once

#include <cstddef>
#include <span>

#include "resources/StringTable.h"

namespace drilldown {

/// Most boundaries that a user can give.
inline constexpr std::size_t MostBoundaries = 99;

/// What is wrong with a list of boundaries, by the id of the text that says so.
enum BoundaryFault : int {
    NoFault = 0,
    TooManyValues = TooManyValuesText,
    InvalidValue = InvalidValueText,
    FallingValues = FallingValuesText,
    NotEnoughValues = NotEnoughValuesText,
};

struct BoundaryListResult {
    std::size_t Count = 0;  ///< boundaries read; they have no meaning with a fault
    BoundaryFault Fault = NoFault;
};

/// Reads a list of strictly rising numbers, separated by blanks and by the list separator of the host, several of which
/// count as one. A line feed is no separator. The first fault from the left ends the reading.
[[nodiscard]] BoundaryListResult ReadBoundaryList(const char* text, std::span<double, MostBoundaries> boundaries);

}  // namespace drilldown
