#include "workbench/hosting/AnalysisRemarks.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/OrderedBits.h"
#include "resources/ControlIds.h"
#include "workbench/data/DateIntervals.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/ValueText.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TableServices.h"
#include "workbench/numbers/NumberFormat.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

constexpr std::size_t MostDistinctValues = 2047;  // that categories are certain to hold; a full set turns to intervals
constexpr int MostDecimals = 4;

std::string Text(double number) {
    return NumberFormat({number}, MostDecimals).TextOf(number);
}

std::string Counted(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " case" : " cases");
}

bool IsWeightInForce(const TableInUse& data) {
    return data.IsWeighted && data.WeightVariable && !data.Weights.empty();
}

/// What rounding the weights to whole numbers changes.
struct Rounding {
    std::int64_t Cases = 0;  ///< of a positive weight
    std::int64_t Dropped = 0;  ///< of these, those that round to nothing
    double Exact = 0.0;
    double Rounded = 0.0;
    bool HasFractions = false;
};

Rounding RoundingOf(const TableInUse& data) {
    Rounding sums;
    for (std::int32_t row = 0; row < data.Table().Cases; ++row) {
        const double weight = data.Weights[static_cast<std::size_t>(row)];
        if (!IsPositiveWeight(weight) || data.ResultOf(row + 1) != CaseResult::Use) {
            continue;
        }
        const double rounded = std::floor(weight + 0.5);
        ++sums.Cases;
        sums.Dropped += rounded == 0.0 ? 1 : 0;
        sums.Exact += weight;
        sums.Rounded += rounded;
        sums.HasFractions = sums.HasFractions || rounded != weight;
    }
    return sums;
}

std::optional<Remark> RoundedWeights(const TableInUse& data) {
    const Rounding sums = RoundingOf(data);
    if (!sums.HasFractions) {
        return std::nullopt;
    }
    const std::string dropped =
        sums.Dropped == 0 ? "no case" : std::to_string(sums.Dropped) + " of " + Counted(sums.Cases);
    return Remark{"weight-fractions",
                  "The weights of " + Quoted(data.Table().Variables[*data.WeightVariable].Name) +
                      " have fractions and are rounded to whole numbers: " + dropped + " drop" +
                      (sums.Dropped > 1 ? "" : "s") + " out, and the weights add up to " + Text(sums.Rounded) +
                      " in place of " + Text(sums.Exact) + '.',
                  "--weighted-moments (WeightedMoments in scripts) takes fractions as they are."};
}

std::optional<Remark> WeightlessCases(const TableInUse& data) {
    std::int64_t cases = 0;
    std::int64_t weightless = 0;
    for (std::int32_t row = 0; row < data.Table().Cases; ++row) {
        const double weight = data.Weights[static_cast<std::size_t>(row)];
        const bool isUsed = data.ResultOf(row + 1) == CaseResult::Use;
        cases += isUsed ? 1 : 0;
        weightless += isUsed && !(IsPositiveWeight(weight) && std::isfinite(weight)) ? 1 : 0;
    }
    if (weightless == 0) {
        return std::nullopt;
    }
    return Remark{"weight-not-positive",
                  std::to_string(weightless) + " of " + Counted(cases) + (weightless == 1 ? " has" : " have") +
                      " no positive weight: " + Quoted(data.Table().Variables[*data.WeightVariable].Name) +
                      " is negative, 0 or missing there, and counts for nothing.",
                  ""};
}

bool IsChecked(AnalysisDocument& document, int box) {
    Window* startup = document.StartupWindow();
    const Control* control = startup == nullptr ? nullptr : startup->Find(box);
    return control != nullptr && control->Checked;
}

/// How many different valid values a variable has in some rows, and whether they are too many for an analysis, which
/// gives its values up when one more arrives at a full set, also a known one.
struct DistinctValues {
    DistinctValues(const Variable& variable, const RowSet& rows, bool onlyWhole = false) {
        std::unordered_set<double> distinct;
        rows.ForEachValue(variable.Values, [&](double value) {
            if (!variable.IsMissing(value) && (!onlyWhole || value == std::floor(value))) {
                AreTooMany = AreTooMany || distinct.size() > MostDistinctValues;
                distinct.insert(value);
            }
        });
        Count = distinct.size();
    }

    std::size_t Count = 0;
    bool AreTooMany = false;
};

std::int64_t CountBelow(const Variable& variable, const RowSet& rows, double bound) {
    std::int64_t below = 0;
    rows.ForEachValue(variable.Values,
                      [&](double value) { below += value < bound && !variable.IsMissing(value) ? 1 : 0; });
    return below;
}

/// Whether the categories are intervals of some width; single values have equal bounds.
bool AreIntervals(const SubjectVariable& shown) {
    return !shown.Bounds.empty() && shown.Bounds.front().Lower < shown.Bounds.front().Upper;
}

std::optional<Remark> BelowFirstInterval(const Variable& variable, const SubjectVariable& shown, const RowSet& rows) {
    const std::int64_t below = CountBelow(variable, rows, shown.Bounds.front().Lower);
    if (below == 0 || !std::isfinite(shown.Bounds.front().Lower)) {
        return std::nullopt;
    }
    const CategoryBounds& bounds = shown.Bounds.front();
    const bool isTime = IsTimeKind(variable.Kind);
    const std::string lower = isTime ? TextOfValue(variable.Kind, bounds.Lower) : Text(bounds.Lower);
    const std::string& name = shown.Categories.front();
    const std::string first = isTime ? NameInDates(variable.Kind, name, bounds.Lower, bounds.Upper) : name;
    return Remark{"below-first-interval",
                  Counted(below) + " of " + Quoted(variable.Name) + " below " + lower + (below == 1 ? " is" : " are") +
                      " counted in the first interval, " + Quoted(first) + "; a drill on that interval leaves " +
                      (below == 1 ? "it" : "them") + " out.",
                  "Let the intervals begin below the smallest value, as with --categorize VAR=step:SIZE."};
}

/// Whether a variable was chosen among the categorical ones of its side.
bool IsChosenAsCategorical(CAnalysisDoc* document, ResultSide side, short variable) {
    const int button = side == ResultSide::Review ? ReviewVariablesButton : DrillVariablesButton;
    const std::vector<short> categorical = DialogsOf(document).Chosen.Of(button).front();
    return std::ranges::find(categorical, variable) != categorical.end();
}

std::optional<Remark> RemarkOnDistinct(const Variable& variable, const DistinctValues& values) {
    if (!values.AreTooMany) {
        return std::nullopt;
    }
    return Remark{"too-many-categories",
                  Quoted(variable.Name) + " has " + std::to_string(values.Count) +
                      " different values, too many for categories (at most " + std::to_string(MostDistinctValues) +
                      "), and is cut into intervals.",
                  "Name it in --continuous and choose the intervals with --categorize, or group its values."};
}

/// A categorical variable turns to intervals at the limit.
std::optional<Remark> TooManyCategories(AnalysisDocument& document, const Variable& variable) {
    return RemarkOnDistinct(variable, {variable, TableServicesOf(&document).Find({})});
}

/// A weight that the file declares isn't in force.
void NoticeUnusedWeight(AnalysisDocument& document, const TableInUse& data) {
    if (data.Table().Weight) {
        const std::string name = data.Table().Variables[*data.Table().Weight].Name;
        Notice(&document, {"weight-unused", "The file declares the weight " + Quoted(name) + ", which isn't in force.",
                           "--weight " + name + " (table.weight in Python) uses it."});
    }
}

}  // namespace

void NoticeWeightless(AnalysisDocument& document) {
    const TableInUse& data = TableOf(&document);
    if (!IsWeightInForce(data)) {
        NoticeUnusedWeight(document, data);
        return;
    }
    if (std::optional<Remark> remark = WeightlessCases(data)) {
        Notice(&document, std::move(*remark));
    }
}

void NoticeWeights(AnalysisDocument& document) {
    const TableInUse& data = TableOf(&document);
    NoticeWeightless(document);
    if (IsWeightInForce(data) && !IsChecked(document, WeightedMomentsBox)) {
        if (std::optional<Remark> remark = RoundedWeights(data)) {
            Notice(&document, std::move(*remark));
        }
    }
}

WeightUse WeightUseNow(CAnalysisDoc* document) {
    const TableInUse& data = TableOf(document);
    if (!IsWeightInForce(data)) {
        return WeightUse::None;
    }
    const bool takesFractions = IsChecked(*static_cast<AnalysisDocument*>(document), WeightedMomentsBox);
    return data.HasFractions && !takesFractions ? WeightUse::Rounded : WeightUse::Exact;
}

void NoticeDistinct(AnalysisDocument& document, const Variable& variable, bool onlyWhole) {
    const RowSet& rows = TableServicesOf(&document).Find({});
    if (std::optional<Remark> remark = RemarkOnDistinct(variable, DistinctValues(variable, rows, onlyWhole))) {
        Notice(&document, std::move(*remark));
    }
}

void NoticeUnweighted(CAnalysisDoc* document, std::string_view result) {
    const TableInUse& data = TableOf(document);
    if (IsWeightInForce(data)) {
        Notice(document, {"unweighted-result",
                          Quoted(result) + " takes no weight: each case counts once, whatever " +
                              Quoted(data.Table().Variables[*data.WeightVariable].Name) + " is.",
                          "Read its counts as numbers of cases."});
    }
}

void NoticeCategories(CAnalysisDoc* document, const ResultSubject& subject) {
    auto* analysis = static_cast<AnalysisDocument*>(document);
    for (const SubjectVariable& shown : subject.Variables) {
        const Variable* variable = TableOf(document).Find(shown.Number);
        if (variable == nullptr || !AreIntervals(shown)) {
            continue;
        }
        if (IsChosenAsCategorical(document, subject.Side, shown.Number)) {
            if (std::optional<Remark> remark = TooManyCategories(*analysis, *variable)) {
                Notice(document, std::move(*remark));
            }
        }
        const RowSet* rows = RemainingCases(*analysis);
        std::optional<Remark> remark = rows == nullptr ? std::nullopt : BelowFirstInterval(*variable, shown, *rows);
        if (remark) {
            Notice(document, std::move(*remark));
        }
    }
}

void NoticeLeftOut(CAnalysisDoc* document, const std::string& what, std::int64_t leftOut) {
    if (leftOut > 0) {
        Notice(document, {"chart-leaves-out",
                          what + " leaves out " + Counted(leftOut) + " without the values that it needs.", ""});
    }
}

void NoticeStep(AnalysisDocument& document, const StepTaken& step) {
    const std::optional<SubsetSize> dropped =
        step.Kind == StepKind::Down ? CountDroppedWithoutValue(document) : std::nullopt;
    if (dropped && dropped->Cases > 0) {
        Notice(&document, {"step-without-value",
                           "The step " + Quoted(step.Condition()) + " leaves out " + Counted(dropped->Cases) +
                               " without a value of " + Quoted(step.Variable) + '.',
                           ""});
    }
}

}  // namespace quillara
