#include "workbench/statistics/ReasonCounts.h"

#include <cmath>
#include <string>

#include "platform/OrderedBits.h"
#include "workbench/data/MissingReasons.h"

namespace quillara {

std::vector<MissingCount> CountReasons(const Variable& variable, const RowSet& rows, const CaseWeights& weights,
                                       WeightCounting counting) {
    if (!variable.Reasons) {
        return {};
    }
    const MissingReasons& reasons = *variable.Reasons;
    std::vector<double> counts(reasons.Reasons.size() + 1);
    rows.ForEach([&](std::size_t row) {
        const double stored = weights.Values.empty() ? 1.0 : weights.Values[row];
        const double weight = counting == WeightCounting::RoundedToWhole ? std::floor(stored + 0.5) : stored;
        if (IsPositiveWeight(weight) && variable.IsMissing(variable.Values[row])) {
            counts[reasons.PlaceAt(row)] += weight;
        }
    });
    std::vector<MissingCount> counted;
    for (std::size_t place = 1; place < counts.size(); ++place) {
        if (counts[place] > 0.0) {
            const MissingReason& reason = reasons.Reasons[place - 1];
            counted.push_back({CodeOfReason(variable, reason), reason.Label, counts[place]});
        }
    }
    if (counts[0] > 0.0) {
        counted.push_back({"", "blank", counts[0]});
    }
    return counted;
}

}  // namespace quillara
