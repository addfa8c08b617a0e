#include "workbench/command/LeftOutResults.h"

#include <algorithm>

#include "workbench/command/ResultList.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/ResultNames.h"

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

std::string TextOf(LeftOutBecause reason, int button) {
    switch (reason) {
        case LeftOutBecause::DoesNotApply:
            return "it needs " + std::string(NeedOf(button));
        case LeftOutBecause::HasNothing:
            return "it has nothing to show";
        case LeftOutBecause::StepOnMissing:
            break;
    }
    return "a step on Missing drops all cases of the review plots; undo it first with --up";
}

}  // namespace

void LeftOutResults::LeaveOut(int button, LeftOutBecause reason) {
    const auto isTheSame = [=](const Omission& other) { return other.Button == button && other.Reason == reason; };
    auto found = std::ranges::find_if(Omissions, isTheSame);
    if (found == Omissions.end()) {
        found = Omissions.insert(found, {button, reason, {}});
    }
    found->Steps.insert(*ShownAt.rbegin());
}

std::vector<std::string> LeftOutResults::Lines() const {
    std::vector<std::string> lines;
    for (const Omission& omission : Omissions) {
        const bool isShown = omission.Reason == LeftOutBecause::StepOnMissing;
        lines.push_back(Quoted(NameOfResult(omission.Button)) + (isShown ? " shows no case" : " is left out") +
                        (omission.Steps == ShownAt ? "" : AfterSteps(omission.Steps)) + ": " +
                        TextOf(omission.Reason, omission.Button) + ".");
    }
    return lines;
}

}  // namespace quillara
