#include "workbench/command/StepTaking.h"

#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/scripting/CategoryLookup.h"

namespace quillara {

StepTaking::StepTaking(DrillSession& session, const DataTable& table, OutputCollection& outputs,
                       std::function<void(const Remark&)> notice)
    : Session(session), Table(table), Outputs(outputs), Notice(std::move(notice)) {}

bool StepTaking::Take(const DrillStep& step, bool skipsImpossible) {
    try {
        Go(step);
        return true;
    } catch (const ImpossibleStep& impossible) {
        if (!skipsImpossible) {
            throw;
        }
        const StepKind kind = step.Category ? StepKind::Down : StepKind::Up;
        const std::string text = StepTaken{kind, step.Variable, step.Category.value_or("")}.Text();
        Notice({"step-skipped", "The step " + Quoted(text) + " is passed over: " + impossible.what()});
        return false;
    }
}

short StepTaking::NumberOf(const std::string& name) const {
    try {
        return static_cast<short>(Table.IndexOf(name) + 1);
    } catch (const DataError& unknown) {
        throw ImpossibleStep(unknown.what());
    }
}

void StepTaking::Go(const DrillStep& step) {
    if (step.Category) {
        GoDown(step.Variable, *step.Category);
    } else {
        GoUp(step.Variable);
    }
}

void StepTaking::GoDown(const std::string& name, const std::string& category) {
    const short variable = NumberOf(name);
    if (Session.CanGoUp(variable)) {
        throw ImpossibleStep("The variable " + Quoted(name) +
                             " has been drilled on already; undo that step first (--up " + name + ").");
    }
    if (!Session.CanGoDown(variable)) {
        throw ImpossibleStep(
            "The variable " + Quoted(name) +
            " can't be drilled on: it is no drill variable; name it in --categorical or --continuous.");
    }
    std::string chosen;
    Session.Down(variable, [&](const CategoryList& list) {
        const std::size_t row = FindCategory(list, category);
        if (const auto remark = RemarkOnEqualNames(list, row, category)) {
            Notice(*remark);
        }
        chosen = NameForPeople(list, list.Rows[row]);
        if (const std::optional<Remark> remark = RemarkOnChoice(list, category, row)) {
            Notice(*remark);
        }
        return row;
    });
    Outputs.Steps.push_back({StepKind::Down, name, chosen, CountRemaining(Session.Analysed())});
}

void StepTaking::GoUp(const std::string& name) {
    const short variable = NumberOf(name);
    if (!Session.CanGoUp(variable)) {
        throw ImpossibleStep("There is no step on the variable " + Quoted(name) + " to undo.");
    }
    Session.Up(variable);
    Outputs.Steps.push_back({StepKind::Up, name, {}, CountRemaining(Session.Analysed())});
}

}  // namespace quillara
