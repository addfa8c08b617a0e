#include "engine/PlainCases.h"

#include <algorithm>
#include <numeric>

#include "engine/GatheredValues.h"
#include "engine/WholeDivision.h"

using namespace drilldown;

namespace {

bool IsWholeDivisor(double x) {
    return x >= 0.0 && x <= LargestWholeDivisor && x == static_cast<double>(static_cast<std::int64_t>(x));
}

}  // namespace

const MomentCases& PlainCases::Take(std::span<const TallyColumn> columns, const WeightedRows& rows,
                                    const MomentLanes& lanes) {
    const WeightedRows near = WithoutList(rows);
    Cases.Count = rows.Count;
    for (std::size_t place = 0; place < columns.size(); ++place) {
        Cases.Columns[place] = GatherValues(columns[place].Entries, near, Gathered[place].data());
    }
    // Spare lanes repeat the last variable; what they come to isn't stored.
    std::fill(Cases.Columns.begin() + static_cast<std::ptrdiff_t>(columns.size()), Cases.Columns.end(),
              Cases.Columns[columns.size() - 1]);
    TakeWeights(rows, lanes);
    return Cases;
}

void PlainCases::TakeWeights(const WeightedRows& rows, const MomentLanes& lanes) {
    const bool wholeSums = std::ranges::all_of(lanes.SumWeights, IsWholeDivisor);
    if (rows.Weights == nullptr) {
        Cases.Weighing = wholeSums ? MomentWeights::One : MomentWeights::Any;
        if (!wholeSums) {
            Ones.fill(1.0);
        }
        Cases.Weights = Ones.data();
        return;
    }
    const std::span<const double> weights(rows.Weights, rows.Count);
    const bool whole =
        wholeSums && std::ranges::all_of(weights, IsWholeDivisor) &&
        std::accumulate(weights.begin(), weights.end(), std::ranges::max(lanes.SumWeights)) <= LargestWholeDivisor;
    Cases.Weighing = whole ? MomentWeights::Whole : MomentWeights::Any;
    Cases.Weights = rows.Weights;
}
