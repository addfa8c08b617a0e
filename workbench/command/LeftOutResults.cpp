#include "workbench/command/LeftOutResults.h"

#include <algorithm>

#include "workbench/command/ResultList.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

/// " after step 1, 3"; 0 is before the first.
std::string AfterSteps(const std::set<int>& steps) {
    std::string text;
    for (const int step : steps) {
        text += (text.empty() ? " after step " : ", ") + std::to_string(step);
    }
    return text;
}

}  // namespace

void LeftOutResults::LeaveOut(int button) {
    auto found = std::ranges::find(Places, button, &std::pair<int, std::set<int>>::first);
    if (found == Places.end()) {
        found = Places.insert(found, {button, {}});
    }
    found->second.insert(*ShownAt.rbegin());
}

std::vector<std::string> LeftOutResults::Lines() const {
    std::vector<std::string> lines;
    for (const auto& [button, steps] : Places) {
        lines.push_back(Quoted(ResultName(button)) + " is left out" + (steps == ShownAt ? "" : AfterSteps(steps)) +
                        ": it needs " + std::string(NeedOf(button)) + ".");
    }
    return lines;
}

}  // namespace quillara
