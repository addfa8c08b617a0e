#include "workbench/hosting/SingleLabels.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "platform/OrderedBits.h"

namespace quillara {
SingleLabels::SingleLabels(const Variable& variable) {
    for (std::size_t i = 1; i <= variable.Texts.size(); ++i) {
        Add(static_cast<double>(i), variable.LabelOf(static_cast<double>(i)));
    }
    if (variable.Kind != ValueKind::Text) {
        for (const auto& [value, texts] : variable.Labels) {
            Add(value, variable.LabelOf(value));
        }
    }
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    double last = std::nan("");
    VisitValues(variable.Values, [&](double value) {
        if (value == last || missing.Contains(value)) {
            return;
        }
        last = value;
        const auto place = PlaceOf(static_cast<float>(value));
        if (place != Known.end() && !NearlyEqual(place->Value, value)) {
            Known[static_cast<std::size_t>(std::distance(Known.cbegin(), place))].Label = nullptr;
        }
    });
}

void SingleLabels::Add(double value, const std::string* label) {
    const auto single = static_cast<float>(value);
    if (label == nullptr) {
        return;
    }
    if (Known.empty() || Known.back().Single != single) {
        Known.push_back({single, value, label});
    } else if (!NearlyEqual(Known.back().Value, value)) {
        Known.back().Label = nullptr;
    }
}

std::vector<SingleLabels::LabelledValue>::const_iterator SingleLabels::PlaceOf(float value) const {
    const auto place = std::ranges::lower_bound(Known, value, {}, &LabelledValue::Single);
    return place != Known.end() && place->Single == value ? place : Known.end();
}

const std::string* SingleLabels::Find(float value) const {
    const auto place = PlaceOf(value);
    return place == Known.end() ? nullptr : place->Label;
}

}  // namespace quillara
