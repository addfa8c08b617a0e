#include "workbench/documents/StepTaken.h"

namespace quillara {

std::string StepTaken::Text() const {
    if (Kind == StepKind::Up) {
        return "Up: " + Variable;
    }
    return "Down: " + Condition();
}

std::vector<StepTaken> StepsInForce(std::span<const StepTaken> steps, std::size_t count) {
    std::vector<StepTaken> inForce;
    for (const StepTaken& step : steps.first(count)) {
        if (step.IsAnew) {
            inForce.clear();
        }
        if (step.Kind == StepKind::Down) {
            inForce.push_back(step);
        } else {
            std::erase_if(inForce, [&step](const StepTaken& down) { return down.Variable == step.Variable; });
        }
    }
    return inForce;
}

}  // namespace quillara
