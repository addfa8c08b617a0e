#include "workbench/hosting/DocumentSubjects.h"

#include <utility>

#include "workbench/data/DateIntervals.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/RoutedResults.h"
#include "workbench/hosting/TableInUse.h"

namespace quillara {
namespace {

/// Whether an analysis makes the names of categories from dates or times: not where values have labels.
bool HasDateNames(const Variable* variable) {
    return variable != nullptr && variable->Labels.empty() && IsTimeKind(variable->Kind);
}

std::vector<std::string> NamesForPeople(const Variable* variable, const SubjectVariable& told) {
    const bool showsDates = HasDateNames(variable) && told.Bounds.size() == told.Categories.size();
    std::vector<std::string> names;
    for (std::size_t i = 0; i < told.Categories.size(); ++i) {
        const std::string name = Replace8CharGrow(told.Categories[i]);
        names.push_back(showsDates ? NameInDates(variable->Kind, name, told.Bounds[i].Lower, told.Bounds[i].Upper)
                                   : name);
    }
    return names;
}

ShownVariable Shown(const TableInUse& data, int number) {
    ShownVariable shown;
    shown.Number = number;
    if (const Variable* variable = data.Find(number)) {
        shown.Name = variable->Name;
        shown.LongName = variable->LongName;
        shown.Kind = variable->Kind;
    }
    return shown;
}

std::optional<CategoryBounds> StepOn(CAnalysisDoc* document, const Variable* variable, int number) {
    if (variable == nullptr || variable->Kind != ValueKind::DateTime || !variable->Labels.empty()) {
        return std::nullopt;
    }
    const std::optional<CaseCondition> step = ConditionOn(*static_cast<AnalysisDocument*>(document), number);
    const bool isShown = step && !variable->IsMissing(step->Upper);
    return isShown ? std::optional(CategoryBounds{step->Lower, step->Upper}) : std::nullopt;
}

}  // namespace

Subject TakeSubject(CAnalysisDoc* document) {
    const TableInUse& data = TableOf(document);
    const ResultSubject told = std::exchange(ResultsOf(document).NextSubject, {});
    NoticeCategories(document, told);
    Subject subject{told.Side, {}, {told.ValueColumns.begin(), told.ValueColumns.end()}};
    for (const SubjectVariable& variable : told.Variables) {
        ShownVariable shown = Shown(data, variable.Number);
        shown.Categories = NamesForPeople(data.Find(variable.Number), variable);
        shown.HasMissing = variable.HasMissing;
        shown.Step = StepOn(document, data.Find(variable.Number), variable.Number);
        subject.Variables.push_back(std::move(shown));
    }
    subject.Weights = WeightUseNow(document);
    return subject;
}

Subject ReviewSubject(const TableInUse& data, std::span<const std::size_t> variables) {
    Subject subject{ResultSide::Review, {}};
    for (const std::size_t variable : variables) {
        subject.Variables.push_back(Shown(data, static_cast<int>(variable) + 1));
    }
    return subject;
}

}  // namespace quillara
