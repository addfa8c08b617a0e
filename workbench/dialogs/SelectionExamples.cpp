#include "workbench/dialogs/SelectionExamples.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "workbench/data/ValueText.h"
#include "workbench/dialogs/FormulaCompletion.h"

namespace quillara {
namespace {

constexpr std::int32_t CasesLookedAt = 500;
constexpr std::size_t VariablesLookedAt = 100;
constexpr std::size_t LongestLabel = 24;

/// What the first cases of a variable have.
struct FirstValues {
    std::vector<double> Known{};  ///< in rising order
    bool HasMissing = false;
};

FirstValues FirstValuesOf(const DataTable& table, const Variable& variable) {
    FirstValues first;
    const auto cases = static_cast<std::size_t>(std::min(table.Cases, CasesLookedAt));
    for (std::size_t row = 0; row < cases; ++row) {
        const double value = variable.Values[row];
        if (variable.IsMissing(value)) {
            first.HasMissing = true;
        } else {
            first.Known.push_back(value);
        }
    }
    std::ranges::sort(first.Known);
    return first;
}

/// Of two digits where it stays between its neighbours.
double Neat(double middle, double least, double most) {
    if (middle == 0.0 || !std::isfinite(middle)) {
        return middle;
    }
    const double unit = std::pow(10.0, std::floor(std::log10(std::abs(middle))) - 1.0);
    const double neat = std::round(middle / unit) * unit;
    return neat >= least && neat < most ? neat : middle;
}

/// A comparison that holds for some of the values and for others doesn't.
std::optional<std::string> Comparison(const Variable& variable, const FirstValues& first) {
    const bool isShown = variable.Kind == ValueKind::Number || variable.Kind == ValueKind::Date;
    if (!isShown || variable.HasLabels() || first.Known.empty() || first.Known.front() == first.Known.back()) {
        return std::nullopt;
    }
    const double least = first.Known.front();
    const double most = first.Known.back();
    const double middle = first.Known[(first.Known.size() - 1) / 2];
    const double bound = middle < most ? middle : least;
    if (variable.Kind == ValueKind::Date) {
        return FormulaName(variable.Name) + " > \"" + TextOfValue(variable.Kind, bound) + '"';
    }
    return FormulaName(variable.Name) + " > " + TextOfValue(variable.Kind, Neat(bound, least, most));
}

/// A comparison with the label that stands in the middle.
std::optional<std::string> LabelComparison(const Variable& variable, const FirstValues& first) {
    if (!variable.HasLabels() || first.Known.empty()) {
        return std::nullopt;
    }
    const std::string* label = variable.LabelOf(first.Known[(first.Known.size() - 1) / 2]);
    const bool isShort = label != nullptr && !label->empty() && label->size() <= LongestLabel;
    const bool isWritten = isShort && label->find('"') == std::string::npos && label->find('\n') == std::string::npos;
    return isWritten ? std::optional(FormulaName(variable.Name) + " = \"" + *label + '"') : std::nullopt;
}

bool IsOneValueEach(const Variable& variable, const DataTable& table) {
    return variable.Kind == ValueKind::Text && variable.Texts.size() > 2 &&
           2 * variable.Texts.size() > static_cast<std::size_t>(table.Cases);
}

}  // namespace

std::vector<std::string> SelectionExamples(const DataTable& table) {
    std::optional<std::string> number;
    std::optional<std::string> label;
    std::optional<std::string> known;
    const std::size_t variables = std::min(table.Variables.size(), VariablesLookedAt);
    for (std::size_t index = 0; index < variables && !(number && label && known); ++index) {
        const Variable& variable = table.Variables[index];
        const FirstValues first = FirstValuesOf(table, variable);
        if (!number) {
            number = Comparison(variable, first);
        }
        if (!label && !IsOneValueEach(variable, table)) {
            label = LabelComparison(variable, first);
        }
        if (!known && first.HasMissing && !first.Known.empty()) {
            known = "not missing(" + FormulaName(variable.Name) + ')';
        }
    }
    std::vector<std::string> examples;
    if (number && label) {
        examples.push_back(*number + " and " + *label);
    } else if (number || label) {
        examples.push_back(number ? *number : *label);
    }
    if (known) {
        examples.push_back(*known);
    }
    return examples;
}

}  // namespace quillara
