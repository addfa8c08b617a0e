#include "workbench/hosting/TableInUse.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <span>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

/// The weights of a variable, with 0 in place of those that must drop their case and wouldn't as they are stored: a
/// missing weight whose code isn't negative, and an infinite one, which would leave no moments to show.
Column UsableWeights(const Variable& variable) {
    const auto isUsable = [&](double weight) {
        return std::isfinite(weight) && (weight < 0 || !variable.IsMissing(weight));
    };
    if (HoldsForAll(variable.Values, isUsable)) {
        return variable.Values;
    }
    const std::span<const double> ofCodes = variable.Values.ValuesOfCodes();
    std::vector<double> weights(ofCodes.begin(), ofCodes.end());
    if (weights.empty()) {
        weights.assign(variable.Values.begin(), variable.Values.end());
    }
    std::ranges::replace_if(weights, std::not_fn(isUsable), 0.0);
    return ofCodes.empty() ? Column(std::move(weights)) : variable.Values.WithValues(std::move(weights));
}

std::size_t MarkOf(const std::vector<CaseResult>& results) {
    std::string bytes;
    bytes.reserve(results.size());
    std::ranges::transform(results, std::back_inserter(bytes),
                           [](CaseResult result) { return static_cast<char>(result); });
    return std::hash<std::string>()(bytes);
}

}  // namespace

void TableInUse::Exchange(std::shared_ptr<const DataTable> table) {
    ++Opened;
    Take(std::move(table));
    Select({});
    ChooseWeight(std::nullopt);
}

void TableInUse::Take(std::shared_ptr<const DataTable> table) {
    Labels.Forget();
    Rows = CaseRows(*table);
    Input = table.get();
    OwnedInput = std::move(table);
}

void TableInUse::TellChange() const {
    if (Changed) {
        Changed();
    }
}

/// Of more an analysis can't number the variables.
std::size_t TableInUse::MostVariables() const {
    constexpr std::size_t mostNumbers = 32766;
    return std::max(Table().Variables.size(), std::min(Table().Variables.size() + RoomForMore, mostNumbers));
}

void TableInUse::Share(const BoundCommons& commons) {
    Commons = commons;
    Commons.Fill(*this);
    Room = MostVariables();
    if (Commons.Table != nullptr) {
        Commons.Table->Variables = static_cast<std::int16_t>(Room);
    }
}

void TableInUse::Extend(std::shared_ptr<const DataTable> longer) {
    if (longer->Variables.size() > Room) {
        throw DataError("No more variables can join this analysis; begin another one.");
    }
    Take(std::move(longer));
    Commons.Fill(*this);
    TellChange();
}

const Variable* TableInUse::Find(int number) const {
    const bool known = number >= 1 && static_cast<std::size_t>(number) <= Table().Variables.size();
    return known ? &Table().Variables[static_cast<std::size_t>(number) - 1] : nullptr;
}

CaseResult TableInUse::ResultOf(std::int32_t caseNumber) const {
    return Selection.empty() ? CaseResult::Use : Selection[static_cast<std::size_t>(caseNumber) - 1];
}

bool TableInUse::HasCases() const {
    const auto isUsed = [](CaseResult result) { return result == CaseResult::Use; };
    return Selection.empty() ? Table().Cases > 0 : std::ranges::any_of(Selection, isUsed);
}

bool TableInUse::FindFractions() const {
    const std::int32_t cases = Weights.empty() ? 0 : Table().Cases;
    for (std::int32_t row = 0; row < cases; ++row) {
        const double weight = Weights[static_cast<std::size_t>(row)];
        if (IsPositiveWeight(weight) && weight != std::floor(weight) && ResultOf(row + 1) == CaseResult::Use) {
            return true;
        }
    }
    return false;
}

void TableInUse::Select(std::vector<CaseResult> results, std::string formula) {
    const bool selectsAll = std::ranges::all_of(results, [](CaseResult result) { return result == CaseResult::Use; });
    Selection = selectsAll ? std::vector<CaseResult>() : std::move(results);
    SelectionMark = selectsAll ? 0 : MarkOf(Selection);
    SelectionFormula = std::move(formula);
    HasFractions = FindFractions();
    TellChange();
}

void TableInUse::ChooseWeight(std::optional<std::size_t> variable, bool isOn) {
    WeightVariable = variable;
    IsWeighted = variable && isOn;
    Weights = IsWeighted ? UsableWeights(Table().Variables.at(*variable)) : Column();
    HasFractions = FindFractions();
    Commons.Fill(*this);
    TellChange();
}

}  // namespace quillara
