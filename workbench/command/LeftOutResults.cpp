#include "workbench/command/LeftOutResults.h"

#include <algorithm>

#include "workbench/command/ResultList.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/ResultNames.h"

namespace quillara {
namespace {

/// " after steps 1, 2 and 4"; 0 is before the first.
std::string AfterSteps(const std::set<int>& steps) {
    std::string text = steps.size() == 1 ? " after step " : " after steps ";
    for (const int step : steps) {
        const bool isLast = step == *steps.rbegin();
        text += (step == *steps.begin() ? "" : isLast ? " and " : ", ") + std::to_string(step);
    }
    return text;
}

/// Why a result shows nothing, and how a remark says so.
struct ReasonText {
    std::string_view Code;
    std::string_view Outcome;
    std::string Why;
    std::string Advice;
};

ReasonText TextOf(LeftOutBecause reason, int button) {
    switch (reason) {
        case LeftOutBecause::DoesNotApply:
            return {"result-left-out", " is left out", "it needs " + std::string(NeedOf(button)),
                    std::string(AdviceFor(button))};
        case LeftOutBecause::HasNothing:
            return {"result-empty", " is left out", "it has nothing to show",
                    "Choose more cases, by other steps or another --select."};
        case LeftOutBecause::StepOnMissing:
            break;
    }
    return {"step-on-missing", " shows no case", "a step on Missing drops all cases of the review plots",
            "Undo it with --up, or select these cases with --select 'missing(VAR)' in place of the step."};
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

std::vector<Remark> LeftOutResults::AsRemarks() const {
    std::vector<Remark> remarks;
    for (const Omission& omission : Omissions) {
        const ReasonText reason = TextOf(omission.Reason, omission.Button);
        remarks.push_back({std::string(reason.Code),
                           Quoted(NameOfResult(omission.Button)) + std::string(reason.Outcome) +
                               (omission.Steps == ShownAt ? "" : AfterSteps(omission.Steps)) + ": " + reason.Why + '.',
                           reason.Advice});
    }
    return remarks;
}

}  // namespace quillara
