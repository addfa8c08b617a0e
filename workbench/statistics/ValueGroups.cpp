#include "workbench/statistics/ValueGroups.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/data/DateIntervals.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/ValueText.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {
namespace {

constexpr std::size_t FewValues = 20;  // of a variable without labels that are shown one by one
constexpr int NeatParts = 10;
constexpr double Infinite = std::numeric_limits<double>::infinity();

/// Valid values that some rows have, ascending; nearly equal ones once, as the largest of them.
std::vector<double> DistinctValues(const Variable& variable, const RowSet& rows) {
    std::vector<double> values;
    if (const auto known = variable.Values.ValuesOfCodes(); !known.empty()) {
        std::vector<bool> isUsed(known.size());
        const TableColumn& stored = variable.Values.Stored();
        const bool isByte = stored.Form == ColumnForm::Codes8;
        rows.ForEach([&](std::size_t row) {
            isUsed[isByte ? stored.As<std::uint8_t>()[row] : stored.As<std::uint16_t>()[row]] = true;
        });
        for (std::size_t code = 0; code < known.size(); ++code) {
            if (isUsed[code] && IsValidValue(variable, known[code])) {
                values.push_back(known[code]);
            }
        }
    } else {
        values = ValidValues(variable, rows).Values;
    }
    std::ranges::sort(values);
    std::vector<double> distinct;
    for (const double value : values) {
        if (distinct.empty() || !NearlyEqual(distinct.back(), value)) {
            distinct.push_back(value);
        } else {
            distinct.back() = value;
        }
    }
    return distinct;
}

Cut DefaultCut(const Variable& variable, std::size_t values) {
    const bool isShownSingly = variable.HasLabels() || variable.Kind == ValueKind::Text || values <= FewValues;
    return isShownSingly ? Cut{} : Cut{CutMethod::Neat, NeatParts};
}

[[noreturn]] void RefuseTooMany(const Variable& variable) {
    throw DataError("The variable " + Quoted(variable.Name) + " has more than " +
                    std::to_string(ValueGroups::MostGroups) + " categories; " +
                    (variable.Kind == ValueKind::Text
                         ? "group its texts first."
                         : "cut it into fewer, as: --categorize " + variable.Name + "=neat:10."));
}

std::vector<double> ExactBounds(double min, double max, int count) {
    const double step = (max - min) / (count - 1);
    std::vector<double> bounds{min - step / 2};
    for (int i = 0; i < count; ++i) {
        bounds.push_back(bounds.back() + step);
    }
    return bounds;
}

std::vector<double> NeatBounds(double min, double max, int count) {
    const NeatBins bins = NeatBinsOver(min, max, count);
    std::vector<double> bounds{bins.Low};
    bounds.insert(bounds.end(), bins.UpperBounds.begin(), bins.UpperBounds.end());
    return bounds;
}

std::vector<double> StepBounds(const Variable& variable, double min, double max, const Cut& cut) {
    std::vector<double> bounds{cut.StartAtMin ? min : cut.StepStart};
    while (bounds.back() <= max) {
        const double next = bounds.back() + cut.StepSize;
        if (bounds.size() > ValueGroups::MostGroups || next <= bounds.back()) {
            RefuseTooMany(variable);
        }
        bounds.push_back(next);
    }
    return bounds;
}

std::vector<double> BoundsAround(const std::vector<double>& inner) {
    std::vector<double> bounds{-Infinite};
    bounds.insert(bounds.end(), inner.begin(), inner.end());
    bounds.push_back(Infinite);
    return bounds;
}

std::vector<double> BoundsFor(const Variable& variable, double min, double max, const Cut& cut) {
    switch (cut.Method) {
        case CutMethod::Exact:
            return ExactBounds(min, max, cut.Count);
        case CutMethod::Neat:
            return NeatBounds(min, max, cut.Count);
        case CutMethod::Step:
            return StepBounds(variable, min, max, cut);
        case CutMethod::Distinct:
        case CutMethod::Integer:
        case CutMethod::Bounds:
            break;
    }
    return BoundsAround(cut.Bounds);
}

}  // namespace

bool IsValidValue(const Variable& variable, double value) {
    return std::isfinite(value) && !variable.IsMissing(value);
}

std::string ValueName(const Variable& variable, double value) {
    const std::string* label = variable.LabelOf(value);
    return label != nullptr && !label->empty() ? *label : TextOfValue(variable.Kind, value);
}

ValueGroups::ValueGroups(const Variable& variable, const RowSet& rows, const std::optional<Cut>& cut)
    : Source(variable) {
    std::vector<double> values = DistinctValues(variable, rows);
    const Cut chosen = cut.value_or(DefaultCut(variable, values.size()));
    const bool isCut = chosen.Method != CutMethod::Distinct && chosen.Method != CutMethod::Integer;
    if (isCut && (values.size() > 1 || (!values.empty() && chosen.Method == CutMethod::Bounds))) {
        TakeBounds(BoundsFor(variable, values.front(), values.back(), chosen), chosen);
    } else {
        TakeValues(std::move(values), chosen.Method == CutMethod::Integer);
    }
    for (const double value : variable.Values.ValuesOfCodes()) {
        GroupsOfCodes.push_back(GroupOf(value));
    }
}

void ValueGroups::TakeValues(std::vector<double> values, bool onlyWhole) {
    OnlyWhole = onlyWhole;
    if (onlyWhole) {
        std::erase_if(values, [](double value) { return !NearlyEqual(value, std::floor(value)); });
    }
    if (values.size() > MostGroups) {
        RefuseTooMany(Source);
    }
    for (const double value : values) {
        GroupNames.push_back(ValueName(Source, value));
    }
    Ends = std::move(values);
}

void ValueGroups::TakeBounds(const std::vector<double>& bounds, const Cut& cut) {
    HasIntervals = true;
    IsOpenAbove = cut.Method == CutMethod::Step;
    for (std::size_t i = 1; i < bounds.size(); ++i) {
        GroupNames.push_back(NameOf(bounds[i - 1], bounds[i]));
        Ends.push_back(bounds[i]);
    }
}

std::string ValueGroups::NameOf(double lower, double upper) const {
    const char* between = IsOpenAbove ? "<=x<" : "<x<=";
    const auto text = [&](double bound) { return TextOfValue(ValueKind::Number, bound); };
    const std::string name = lower == -Infinite  ? "x<=" + text(upper)
                             : upper == Infinite ? text(lower) + "<x"
                                                 : text(lower) + between + text(upper);
    const bool isCalendar = IsTimeKind(Source.Kind);
    return isCalendar ? NameInDates(Source.Kind, name, lower, upper) : name;
}

std::int32_t ValueGroups::GroupOf(double value) const {
    if (Ends.empty() || !IsValidValue(Source, value) || (OnlyWhole && !NearlyEqual(value, std::floor(value)))) {
        return NoGroup;
    }
    const auto end = IsOpenAbove ? std::ranges::upper_bound(Ends, value) : std::ranges::lower_bound(Ends, value);
    return static_cast<std::int32_t>(std::min<std::ptrdiff_t>(end - Ends.begin(), std::ssize(Ends) - 1));
}

std::int32_t ValueGroups::GroupAt(std::size_t row) const {
    const TableColumn& stored = Source.Values.Stored();
    switch (stored.Form) {
        case ColumnForm::Codes8:
            return GroupsOfCodes[stored.As<std::uint8_t>()[row]];
        case ColumnForm::Codes16:
            return GroupsOfCodes[stored.As<std::uint16_t>()[row]];
        case ColumnForm::Integers:
        case ColumnForm::Doubles:
            break;
    }
    return GroupOf(Source.Values[row]);
}

}  // namespace quillara
