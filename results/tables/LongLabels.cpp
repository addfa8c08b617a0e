#include <algorithm>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

std::int16_t HasLongLabel(CDrillDown& analysis, const CDrillDown::DrillSet* set, std::int16_t var, std::int16_t type) {
    // Intended: a continuous variable never has long labels here, unlike in the summary, which asks for every step;
    // the frequency tables of continuous variables depend on having no description.
    if (type == ContinuousVariable) {
        return 0;
    }
    HostBuffer<char> buffer(analysis, NameFieldSize);
    const auto record = analysis.LookFor(var, set);
    if (!buffer || record == set->end()) {
        return 0;
    }
    const bool found = std::any_of(
        record->CategorySet.begin(), record->CategorySet.end(),
        [&](const Categories& category) { return FindLongLabel(analysis, *record, category, buffer.data()); });
    return found ? 1 : 0;
}

}  // namespace

std::int16_t CDrillDown::LongDescription(std::int16_t var, std::int16_t type) {
    return HasLongLabel(*this, DrillDowns, var, type);
}

std::int16_t CDrillDown::LongDescriptionReviews(std::int16_t var, std::int16_t type) {
    return HasLongLabel(*this, Reviews, var, type);
}
