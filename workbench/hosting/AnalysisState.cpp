#include "workbench/hosting/AnalysisState.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "workbench/hosting/LongTexts.h"

namespace quillara {

namespace {

/// The weights of a variable with 0 in place of those that must drop their case and wouldn't as they are stored: a
/// missing weight whose code isn't negative, and an infinite one, which would leave no moments to show. Empty when the
/// column can be handed out as it is.
std::vector<double> UsableWeights(const Variable& variable) {
    const auto isUsable = [&](double weight) {
        return std::isfinite(weight) && (weight < 0 || !variable.IsMissing(weight));
    };
    if (std::ranges::all_of(variable.Values, isUsable)) {
        return {};
    }
    std::vector<double> weights = variable.Values;
    std::ranges::replace_if(weights, std::not_fn(isUsable), 0.0);
    return weights;
}

/// Copies a text into a field of fixed width, which is not terminated when it is full.
template <std::size_t Width>
void FillField(char (&field)[Width], const std::string& text) {
    const std::string cut = WithoutBrokenTail(text.substr(0, Width));
    std::fill(std::copy(cut.begin(), cut.end(), field), field + Width, '\0');
}

}  // namespace

AnalysisState::AnalysisState(const DataTable& table, const AnalysisServices& services)
    : Services(services), Blocks(*this), Input(&table) {
    Dialogs.Queue.Trace = [this](std::string_view call) { Trace(call); };
}

AnalysisState::~AnalysisState() = default;

void AnalysisState::Exchange(std::shared_ptr<const DataTable> table) {
    Labels.Forget();
    OwnedInput = std::move(table);
    Input = OwnedInput.get();
    Selection.clear();
    SelectionFormula.clear();
    ChooseWeight(std::nullopt);
}

const Variable* AnalysisState::FindVariable(int number) const {
    const bool known = number >= 1 && static_cast<std::size_t>(number) <= Table().Variables.size();
    return known ? &Table().Variables[static_cast<std::size_t>(number) - 1] : nullptr;
}

CaseResult AnalysisState::ResultOf(std::int32_t caseNumber) const {
    return Selection.empty() ? CaseResult::Use : Selection[static_cast<std::size_t>(caseNumber) - 1];
}

bool AnalysisState::AskForBreak() const {
    const bool flagged = Services.BreakFlag != nullptr && Services.BreakFlag->load(std::memory_order_relaxed);
    return flagged || (Services.BreakRequested && Services.BreakRequested());
}

void AnalysisState::ReportProgress(std::int32_t done) const {
    if (Progress.Running && Services.ProgressAdvanced) {
        Services.ProgressAdvanced(done);
    }
}

void AnalysisState::Select(std::vector<CaseResult> results) {
    const bool selectsAll = std::ranges::all_of(results, [](CaseResult result) { return result == CaseResult::Use; });
    Selection = selectsAll ? std::vector<CaseResult>() : std::move(results);
    SelectionFormula.clear();
}

void AnalysisState::ChooseWeight(std::optional<std::size_t> variable, bool isOn) {
    WeightVariable = variable;
    IsWeighted = variable && isOn;
    Weights = nullptr;
    CleanWeights.clear();
    if (IsWeighted) {
        const Variable& weight = Table().Variables.at(*variable);
        CleanWeights = UsableWeights(weight);
        Weights = CleanWeights.empty() ? weight.Values.data() : CleanWeights.data();
    }
    FillCommons();
}

void AnalysisState::FillCommons() const {
    if (Commons.Table != nullptr) {
        Commons.Table->Variables = static_cast<std::int16_t>(Table().Variables.size());
        Commons.Table->Cases = Table().Cases;
        FillField(Commons.Table->HeaderText, Table().Header);
    }
    if (Commons.Names != nullptr) {
        Commons.Names->CaseNameWidth = static_cast<std::int16_t>(Table().CaseNameWidth());
    }
    if (Commons.Weight != nullptr) {
        Commons.Weight->Active = IsWeighted ? 1 : 0;
        Commons.Weight->Variable = static_cast<std::int16_t>(WeightVariable ? *WeightVariable + 1 : 0);
    }
}

void AnalysisState::Trace(std::string_view call) const {
    if (Services.Trace) {
        Services.Trace(call);
    }
}

}  // namespace quillara
