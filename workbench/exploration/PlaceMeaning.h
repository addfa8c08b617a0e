#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/exploration/DrillOffers.h"

namespace quillara {

/// A category that a place shows.
struct PlacedCategory {
    std::string Name;  ///< for people
    bool IsMissing = false;
    bool IsEmpty = false;
    std::size_t Before = 0;  ///< as in a DrillOffer
};

/// A variable that a place is about, and its category there; nothing: all of the variable.
struct PlacedVariable {
    std::string Name;
    std::optional<PlacedCategory> Category{};
};

/// What a place of a document stands for; empty on the bare ground.
[[nodiscard]] std::vector<PlacedVariable> MeaningOf(const ResultDocument& document, const DocumentPlace& place);

}  // namespace quillara
