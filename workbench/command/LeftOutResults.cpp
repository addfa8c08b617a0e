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

void LeftOutResults::LeaveOut(int button, bool applies) {
    const auto isTheSame = [=](const Omission& other) { return other.Button == button && other.Applies == applies; };
    auto found = std::ranges::find_if(Omissions, isTheSame);
    if (found == Omissions.end()) {
        found = Omissions.insert(found, {button, applies, {}});
    }
    found->Steps.insert(*ShownAt.rbegin());
}

std::vector<std::string> LeftOutResults::Lines() const {
    std::vector<std::string> lines;
    for (const Omission& omission : Omissions) {
        const std::string need = "it needs " + std::string(NeedOf(omission.Button));
        lines.push_back(Quoted(ResultName(omission.Button)) + " is left out" +
                        (omission.Steps == ShownAt ? "" : AfterSteps(omission.Steps)) + ": " +
                        (omission.Applies ? "it has nothing to show" : need) + ".");
    }
    return lines;
}

}  // namespace quillara
