#include "workbench/dialogs/SelectionPreview.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"
#include "workbench/data/FormulaTokens.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

/// Where the variable stands that an error says isn't there.
std::optional<std::size_t> PlaceOfMissedName(const DataTable& table, const std::string& formula,
                                             const std::string& fault) {
    for (const Token& token : TokensOf({formula, SelectionRole})) {
        const bool isName = token.Kind == TokenKind::Word || token.Kind == TokenKind::Name;
        if (isName && !table.Find(token.Text) && fault.find(Quoted(token.Text)) != std::string::npos) {
            return token.Offset;
        }
    }
    return std::nullopt;
}

bool IsBlank(const std::string& formula) {
    return formula.find_first_not_of(" \n\t") == std::string::npos;
}

}  // namespace

std::string SelectionOutcome::Text(std::int32_t cases) const {
    if (!Fault.empty()) {
        return Fault;
    }
    const std::string of =
        std::to_string(Selected) + " of " + std::to_string(cases) + (cases == 1 ? " case" : " cases");
    return of + (Selected == 1 ? " is selected" : " are selected");
}

SelectionOutcome OutcomeOf(const DataTable& table, const std::string& formula) {
    SelectionOutcome outcome;
    outcome.Formula = formula;
    if (IsBlank(formula)) {
        outcome.Fault = "Write a condition: a variable, a comparison and a value.";
        return outcome;
    }
    try {
        const std::vector<CaseResult> results = SelectCases(table, formula);
        outcome.Selected = static_cast<std::int32_t>(std::ranges::count(results, CaseResult::Use));
    } catch (const UnreadableFormula& failure) {
        outcome.Fault = failure.what();
        outcome.Place = failure.Offset;
    } catch (const std::bad_alloc&) {
        outcome.Fault = "There is not enough memory to count the cases.";
    } catch (const std::exception& failure) {
        outcome.Fault = failure.what();
        outcome.Place = PlaceOfMissedName(table, formula, outcome.Fault);
    }
    return outcome;
}

SelectionPreview::SelectionPreview(const DataTable& table, std::function<void()> ready)
    : Table(table), Ready(std::move(ready)), Worker([this] { Work(); }) {}

SelectionPreview::~SelectionPreview() {
    {
        const std::scoped_lock lock(Guard);
        IsEnding = true;
    }
    Called.notify_one();
    Worker.join();
}

void SelectionPreview::Ask(std::string formula) {
    {
        const std::scoped_lock lock(Guard);
        Asked = std::move(formula);
        Done.reset();
    }
    Called.notify_one();
}

std::optional<SelectionOutcome> SelectionPreview::Take() {
    const std::scoped_lock lock(Guard);
    return std::exchange(Done, std::nullopt);
}

void SelectionPreview::Work() {
    std::unique_lock lock(Guard);
    for (;;) {
        Called.wait(lock, [this] { return IsEnding || Asked; });
        if (IsEnding) {
            return;
        }
        const std::string formula = *std::exchange(Asked, std::nullopt);
        lock.unlock();
        SelectionOutcome outcome = OutcomeOf(Table, formula);
        lock.lock();
        if (!Asked && !IsEnding) {
            Done = std::move(outcome);
            lock.unlock();
            Ready();
            lock.lock();
        }
    }
}

}  // namespace quillara
