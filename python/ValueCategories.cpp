#include "python/ValueCategories.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <unordered_map>

using quillara::ValueKind;
using quillara::Variable;

namespace {

using LabelledValue = std::pair<double, std::string>;

std::vector<LabelledValue> TextsAsLabels(const Variable& variable) {
    std::vector<LabelledValue> texts;
    for (std::size_t i = 0; i < variable.Texts.size(); ++i) {
        const auto value = static_cast<double>(i + 1);
        const std::string* label = variable.LabelOf(value);
        texts.emplace_back(value, label == nullptr ? variable.Texts[i] : *label);
    }
    return texts;
}

/// Values of cases that no label tells of.
std::set<double> OtherValues(const Variable& variable, const std::vector<LabelledValue>& known) {
    std::set<double> others;
    for (const double value : variable.Values) {
        if (!IsGap(variable, value) && !std::ranges::binary_search(known, value, {}, &LabelledValue::first)) {
            others.insert(value);
        }
    }
    return others;
}

std::vector<LabelledValue> AllValues(const Variable& variable) {
    std::vector<LabelledValue> values = LabelledValues(variable);
    for (const double other : OtherValues(variable, values)) {
        values.emplace_back(other, ExactText(other));
    }
    std::ranges::sort(values, {}, &LabelledValue::first);
    return values;
}

/// Until no two are alike: a label may read like another with its number.
std::vector<std::string> DistinctNames(const std::vector<LabelledValue>& values) {
    std::vector<std::string> names;
    std::ranges::transform(values, std::back_inserter(names), &LabelledValue::second);
    for (bool changed = true; changed;) {
        changed = false;
        std::unordered_map<std::string, int> uses;
        for (const std::string& name : names) {
            ++uses[name];
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (uses[names[i]] > 1) {
                names[i] += " (" + ExactText(values[i].first) + ')';
                changed = true;
            }
        }
    }
    return names;
}

}  // namespace

bool IsGap(const Variable& variable, double value) {
    return std::isnan(value) || variable.IsMissing(value);
}

std::string ExactText(double value) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof(text), value).ptr};
}

std::vector<LabelledValue> LabelledValues(const Variable& variable) {
    if (variable.Kind == ValueKind::Text) {
        return TextsAsLabels(variable);
    }
    std::vector<LabelledValue> labels;
    for (const auto& [value, texts] : variable.Labels) {
        if (!texts.Label.empty() && !IsGap(variable, value)) {
            labels.emplace_back(value, texts.Label);
        }
    }
    return labels;
}

bool IsCategorical(const Variable& variable) {
    const bool hasLabels = std::ranges::any_of(variable.Labels, [&variable](const auto& entry) {
        return !entry.second.Label.empty() && !IsGap(variable, entry.first);
    });
    return hasLabels && (variable.Kind == ValueKind::Number || variable.Kind == ValueKind::Text);
}

ValueCategories CategoriesOf(const Variable& variable) {
    const std::vector<LabelledValue> values = AllValues(variable);
    ValueCategories categories{DistinctNames(values), {}};
    categories.Places.reserve(variable.Values.size());
    for (const double value : variable.Values) {
        const auto found = std::ranges::lower_bound(values, value, {}, &LabelledValue::first);
        categories.Places.push_back(IsGap(variable, value) ? -1 : static_cast<std::int32_t>(found - values.begin()));
    }
    return categories;
}
