#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace quillara {

struct DrillOptions;

/// A cross table that is asked for, by the names of its variables.
struct CrossNames {
    std::string Rows;
    std::string Columns;
};

/// Groups side by side, as `quillara drill` is asked for them.
struct GroupOptions {
    std::vector<std::string>
        Each;  ///< variables whose categories are stepped into one after the other, from the outside
    std::vector<CrossNames> Crosses;
    std::vector<std::string> Boxes;  ///< variables of box plots that have a box for each category of By
    std::optional<std::string> By;
    bool WhatDiffers = false;

    [[nodiscard]] bool IsAnyAskedFor() const {
        return !Each.empty() || !Crosses.empty() || !Boxes.empty() || WhatDiffers;
    }
    /// Whether the host makes graphs itself.
    [[nodiscard]] bool HasGraphs() const { return !Crosses.empty() || !Boxes.empty(); }
};

/// Adds these options to the command.
void AddGroupOptions(CLI::App& command, GroupOptions& groups);

/// Results that are asked for so take the place of the default ones. Throws UsageError when the options don't go
/// together.
void CompleteGroups(DrillOptions& options);

}  // namespace quillara
