#include "workbench/plots/OrderStatistics.h"

#include <algorithm>
#include <numeric>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

constexpr int LeadingBits = 16;
constexpr std::size_t Groups = std::size_t{1} << LeadingBits;

/// Sign, exponent and the first four bits behind.
std::size_t GroupOf(double value) {
    return static_cast<std::size_t>((OrderedBits(value) >> (64 - LeadingBits)) + static_cast<std::int64_t>(Groups / 2));
}

}  // namespace

OrderStatistics::OrderStatistics(std::span<const double> values) : Values(values), Ends(Groups) {
    for (const double value : values) {
        ++Ends[GroupOf(value)];
    }
    std::partial_sum(Ends.begin(), Ends.end(), Ends.begin());
}

/// The values with the leading bits of the one at a place.
std::vector<double> OrderStatistics::GroupAt(std::size_t place) const {
    const auto end = std::ranges::upper_bound(Ends, place);
    const auto group = static_cast<std::size_t>(end - Ends.begin());
    const std::size_t size = *end - (group == 0 ? 0 : Ends[group - 1]);
    std::vector<double> found(size + 1);  // values of other groups are written over by the next one
    std::size_t count = 0;
    for (const double value : Values) {
        found[count] = value;
        count += GroupOf(value) == group ? 1U : 0U;
    }
    found.resize(size);
    return found;
}

std::pair<double, double> OrderStatistics::At(std::size_t place) const {
    std::vector<double> group = GroupAt(place);
    const auto end = std::ranges::upper_bound(Ends, place);
    const std::size_t first = *end - group.size();
    const auto at = group.begin() + static_cast<std::ptrdiff_t>(place - first);
    std::ranges::nth_element(group, at);
    if (at + 1 != group.end()) {
        return {*at, *std::min_element(at + 1, group.end())};
    }
    return {*at, place + 1 == Values.size() ? *at : std::ranges::min(GroupAt(place + 1))};
}

}  // namespace quillara
