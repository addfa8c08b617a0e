#include "workbench/hosting/DocumentSubjects.h"

#include <utility>

#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/LongTexts.h"

namespace quillara {
namespace {

ShownVariable Shown(const AnalysisState& state, int number) {
    ShownVariable shown;
    shown.Number = number;
    if (const Variable* variable = state.FindVariable(number)) {
        shown.Name = variable->Name;
        shown.LongName = variable->LongName;
        shown.Kind = variable->Kind;
    }
    return shown;
}

}  // namespace

Subject TakeSubject(AnalysisState& state) {
    const ResultSubject told = std::exchange(state.NextSubject, {});
    Subject subject{told.Side, {}};
    for (const SubjectVariable& variable : told.Variables) {
        ShownVariable shown = Shown(state, variable.Number);
        for (const std::string& category : variable.Categories) {
            shown.Categories.push_back(Replace8CharGrow(category));
        }
        shown.HasMissing = variable.HasMissing;
        subject.Variables.push_back(std::move(shown));
    }
    return subject;
}

Subject ReviewSubject(const AnalysisState& state, std::span<const std::size_t> variables) {
    Subject subject{ResultSide::Review, {}};
    for (const std::size_t variable : variables) {
        subject.Variables.push_back(Shown(state, static_cast<int>(variable) + 1));
    }
    return subject;
}

}  // namespace quillara
