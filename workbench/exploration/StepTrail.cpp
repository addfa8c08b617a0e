#include "workbench/exploration/StepTrail.h"

#include "workbench/exploration/Exploration.h"
#include "workbench/hosting/RemainingCases.h"

namespace quillara {

std::vector<TrailPlace> TrailOf(Exploration& exploration) {
    std::vector<TrailPlace> trail{{{}, {}, exploration.Selected()}};
    const std::vector<StepTaken> steps = exploration.Steps();
    // Asked for last: the cases that were looked for last are those that remain.
    const std::vector<SubsetSize> sizes = CountAlong(exploration.Analysed(), steps);
    for (std::size_t step = 0; step < steps.size(); ++step) {
        const auto left = step < sizes.size() ? std::optional(sizes[step]) : std::nullopt;
        trail.push_back({steps[step].Variable, steps[step].Condition(), left});
    }
    return trail;
}

}  // namespace quillara
