#include "engine/MomentTally.h"

#include <algorithm>

#include "engine/PlainCases.h"

using namespace drilldown;

namespace {

constexpr double StartOfMin = 1.7e+308;
constexpr double StartOfMax = -1.7e+308;

}  // namespace

MomentTally::MomentTally(CAnalysisSupport& host, std::size_t variables)
    : Mean(host, variables + 1),
      SumSquares(host, variables + 1),
      Min(host, variables + 1),
      Max(host, variables + 1),
      SumWeights(host, variables + 1),
      MissingWeight(host, variables + 1),
      ValidCount(host, variables + 1),
      MissingCount(host, variables + 1),
      HasMemory(Mean && SumSquares && Min && Max && SumWeights && MissingWeight && ValidCount && MissingCount) {
    if (HasMemory) {
        std::fill_n(Min.data(), variables, StartOfMin);
        std::fill_n(Max.data(), variables, StartOfMax);
    }
}

void MomentTally::Add(std::size_t first, std::span<const TallyColumn> columns, const WeightedRows& rows) {
    while (!columns.empty()) {
        const std::size_t lanes = std::min(columns.size(), MomentLaneLimit);
        AddLanes(first, columns.first(lanes), rows);
        columns = columns.subspan(lanes);
        first += lanes;
    }
}

void MomentTally::AddLanes(std::size_t first, std::span<const TallyColumn> columns, const WeightedRows& rows) {
    MomentLanes lanes{};
    for (std::size_t lane = 0; lane < MomentLaneLimit; ++lane) {
        // Spare lanes repeat the last variable; what they come to isn't stored.
        const std::size_t place = std::min(lane, columns.size() - 1);
        LoadLane(lanes, lane, first + place);
        lanes.LowestMissing[lane] = columns[place].Missing.Lowest;
        lanes.HighestMissing[lane] = columns[place].Missing.Highest;
    }
    PlainCases cases;
    for (std::size_t done = 0; done < rows.Count; done += PlainCases::Limit) {
        const std::size_t count = std::min(PlainCases::Limit, rows.Count - done);
        UpdateMoments(lanes, columns.size(), cases.Take(columns, rows.Part(done, count), lanes));
    }
    for (std::size_t lane = 0; lane < columns.size(); ++lane) {
        const std::size_t variable = first + lane;
        StoreLane(lanes, lane, variable);
        const auto missing = static_cast<std::int32_t>(lanes.MissingCount[lane]);
        MissingCount[variable] += missing;
        ValidCount[variable] += static_cast<std::int32_t>(rows.Count) - missing;
    }
}

void MomentTally::LoadLane(MomentLanes& lanes, std::size_t lane, std::size_t variable) const {
    lanes.Mean[lane] = Mean[variable];
    lanes.SumSquares[lane] = SumSquares[variable];
    lanes.SumWeights[lane] = SumWeights[variable];
    lanes.Min[lane] = Min[variable];
    lanes.Max[lane] = Max[variable];
    lanes.MissingWeight[lane] = MissingWeight[variable];
    lanes.MissingCount[lane] = 0.0;
}

void MomentTally::StoreLane(const MomentLanes& lanes, std::size_t lane, std::size_t variable) const {
    Mean[variable] = lanes.Mean[lane];
    SumSquares[variable] = lanes.SumSquares[lane];
    SumWeights[variable] = lanes.SumWeights[lane];
    Min[variable] = lanes.Min[lane];
    Max[variable] = lanes.Max[lane];
    MissingWeight[variable] = lanes.MissingWeight[lane];
}

void MomentTally::AddMissing(std::size_t first, std::size_t count, const WeightedRows& rows) {
    for (std::size_t variable = first; variable < first + count; ++variable) {
        double weight = MissingWeight[variable];
        for (std::size_t i = 0; i < rows.Count; ++i) {
            weight += rows.WeightAt(i);
        }
        MissingWeight[variable] = weight;
        MissingCount[variable] += static_cast<std::int32_t>(rows.Count);
    }
}

MomentStatistics MomentTally::Of(std::size_t variable) const {
    return {Min[variable],          Max[variable],           Mean[variable],       SumSquares[variable],
            MissingCount[variable], MissingWeight[variable], ValidCount[variable], SumWeights[variable]};
}
