#include "workbench/statistics/SubsetContrast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

#include "workbench/statistics/CrossTable.h"
#include "workbench/statistics/Distribution.h"

namespace quillara {
namespace {

constexpr std::size_t MostNamed = 3;  // categories on either side
constexpr double LeastOfLargest = 0.25;  // of the largest difference, for a further category to be named
constexpr double KolmogorovLimit = 1.3581015157406195;  // that the distribution of Kolmogorov passes in one of twenty
constexpr double NormalLimit = 1.6448536269514722;  // likewise of the normal distribution, on one side

/// How many equal weights tell as much.
double EffectiveSize(const WeightedValues& sample) {
    if (sample.Weights.empty()) {
        return static_cast<double>(sample.Values.size());
    }
    double sum = 0.0;
    double squares = 0.0;
    for (const double weight : sample.Weights) {
        sum += weight;
        squares += weight * weight;
    }
    return squares > 0.0 ? sum * sum / squares : 0.0;
}

/// A valid value and its share of one part of the cases.
struct ValueShare {
    double Value;
    double Share;
};

/// Ascending; they add up to 1.
std::vector<ValueShare> SharesOf(const WeightedValues& sample) {
    std::vector<ValueShare> shares;
    shares.reserve(sample.Values.size());
    for (std::size_t i = 0; i < sample.Values.size(); ++i) {
        shares.push_back({sample.Values[i], sample.Weights.empty() ? 1.0 : sample.Weights[i]});
    }
    std::ranges::sort(shares, {}, &ValueShare::Value);
    double total = 0.0;
    for (const ValueShare& share : shares) {
        total += share.Share;
    }
    for (ValueShare& share : shares) {
        share.Share /= total;
    }
    return shares;
}

/// Both parts up to one value.
struct Reached {
    double Value = 0.0;
    double InSubset = 0.0;
    double InRest = 0.0;

    [[nodiscard]] double Gap() const { return std::fabs(InSubset - InRest); }
};

/// Where the shares up to a value differ most.
Reached LargestGap(const std::vector<ValueShare>& subset, const std::vector<ValueShare>& rest) {
    Reached at;
    Reached largest;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < subset.size() && j < rest.size()) {
        at.Value = std::min(subset[i].Value, rest[j].Value);
        for (; i < subset.size() && subset[i].Value == at.Value; ++i) {
            at.InSubset += subset[i].Share;
        }
        for (; j < rest.size() && rest[j].Value == at.Value; ++j) {
            at.InRest += rest[j].Share;
        }
        if (at.Gap() > largest.Gap()) {
            largest = at;
        }
    }
    return largest;
}

Evidence EvidenceOf(const VariableContrast& contrast, bool isWithinChance) {
    const std::int64_t least = std::min(contrast.CasesInSubset, contrast.CasesInRest);
    if (least == 0) {
        return Evidence::NoCases;
    }
    if (least < VariableContrast::Few) {
        return Evidence::FewCases;
    }
    return isWithinChance ? Evidence::WithinChance : Evidence::Clear;
}

void NameRanges(VariableContrast& contrast, const Variable& variable, const Reached& gap) {
    const std::string bound = ValueName(variable, gap.Value);
    const SharePair below{"<= " + bound, gap.InSubset, gap.InRest};
    const SharePair above{"> " + bound, 1.0 - gap.InSubset, 1.0 - gap.InRest};
    const bool hasMoreBelow = gap.InSubset > gap.InRest;
    if (gap.Gap() > 0.0) {
        contrast.Over.push_back(hasMoreBelow ? below : above);
        contrast.Under.push_back(hasMoreBelow ? above : below);
    }
}

double StandardisedDifference(const ValueMoments& subset, const ValueMoments& rest) {
    const double scale = std::hypot(DeviationOf(subset), DeviationOf(rest)) / std::sqrt(2.0);
    return scale > 0.0 ? (subset.Mean - rest.Mean) / scale : Undefined;
}

/// The value that chi-square of so many degrees passes in one of twenty (Wilson and Hilferty's cube).
double ChiSquareLimit(double freedom) {
    const double part = 2.0 / (9.0 * freedom);
    return freedom * std::pow(1.0 - part + NormalLimit * std::sqrt(part), 3.0);
}

/// Names the categories that differ most in one direction.
std::vector<SharePair> LargestDifferences(std::vector<SharePair> shares, double sign) {
    const auto difference = [sign](const SharePair& pair) { return sign * (pair.InSubset - pair.InRest); };
    std::ranges::stable_sort(shares, std::greater(), difference);
    const double largest = shares.empty() ? 0.0 : difference(shares.front());
    const auto isSmall = [&](const SharePair& pair) {
        return difference(pair) <= 0.0 || difference(pair) < LeastOfLargest * largest;
    };
    const auto end = std::ranges::find_if(shares, isSmall);
    shares.erase(end, shares.end());
    shares.resize(std::min(shares.size(), MostNamed));
    return shares;
}

/// The sums of weights of each valid value, in the subset and in the rest.
using WeightsOfValues = std::map<double, std::array<double, 2>>;

WeightsOfValues CountByValue(const WeightedValues& subset, const WeightedValues& rest) {
    WeightsOfValues found;
    for (const std::size_t side : {std::size_t{0}, std::size_t{1}}) {
        const WeightedValues& sample = side == 0 ? subset : rest;
        for (std::size_t i = 0; i < sample.Values.size(); ++i) {
            found[sample.Values[i]][side] += sample.Weights.empty() ? 1.0 : sample.Weights[i];
        }
    }
    return found;
}

std::array<double, 2> TotalsOf(const WeightsOfValues& counts) {
    std::array<double, 2> totals{};
    for (const auto& [value, sums] : counts) {
        totals[0] += sums[0];
        totals[1] += sums[1];
    }
    return totals;
}

}  // namespace

VariableContrast ContrastOfNumbers(const Variable& variable, const SubsetAndRest& parts) {
    const WeightedValues subset = ValidValues(variable, parts.Subset, parts.Weights);
    const WeightedValues rest = ValidValues(variable, parts.Rest, parts.Weights);
    const Reached gap = LargestGap(SharesOf(subset), SharesOf(rest));
    VariableContrast contrast;
    contrast.Variable = variable.Name;
    contrast.IsNumber = true;
    contrast.Distance = gap.Gap();
    contrast.CramersV = Undefined;
    contrast.Difference = StandardisedDifference(MomentsOf(subset, WeightedSize::SumOfWeights),
                                                 MomentsOf(rest, WeightedSize::SumOfWeights));
    contrast.CasesInSubset = std::ssize(subset.Values);
    contrast.CasesInRest = std::ssize(rest.Values);
    NameRanges(contrast, variable, gap);
    const double inSubset = EffectiveSize(subset);
    const double inRest = EffectiveSize(rest);
    const double limit = KolmogorovLimit * std::sqrt((inSubset + inRest) / (inSubset * inRest));
    contrast.Told = EvidenceOf(contrast, contrast.Distance <= limit);
    return contrast;
}

VariableContrast ContrastOfCategories(const Variable& variable, const SubsetAndRest& parts) {
    const WeightedValues subset = ValidValues(variable, parts.Subset, parts.Weights);
    const WeightedValues rest = ValidValues(variable, parts.Rest, parts.Weights);
    const WeightsOfValues counts = CountByValue(subset, rest);
    const std::array<double, 2> totals = TotalsOf(counts);
    VariableContrast contrast;
    contrast.Variable = variable.Name;
    contrast.Difference = Undefined;
    contrast.CasesInSubset = std::ssize(subset.Values);
    contrast.CasesInRest = std::ssize(rest.Values);
    std::vector<SharePair> shares;
    std::vector<double> cells;
    for (const auto& [value, sums] : counts) {
        const SharePair& share =
            shares.emplace_back(SharePair{ValueName(variable, value), totals[0] > 0.0 ? sums[0] / totals[0] : 0.0,
                                          totals[1] > 0.0 ? sums[1] / totals[1] : 0.0});
        contrast.Distance += std::fabs(share.InSubset - share.InRest) / 2;
        cells.insert(cells.end(), sums.begin(), sums.end());
    }
    contrast.CramersV = AssociationOf(cells, 2).CramersV;
    contrast.Over = LargestDifferences(shares, 1.0);
    contrast.Under = LargestDifferences(shares, -1.0);
    const double size = EffectiveSize(subset) + EffectiveSize(rest);
    const bool isWithinChance = counts.size() < 2 || size * contrast.CramersV * contrast.CramersV <=
                                                         ChiSquareLimit(static_cast<double>(counts.size() - 1));
    contrast.Told = EvidenceOf(contrast, isWithinChance);
    return contrast;
}

std::vector<VariableContrast> ContrastsOf(const DataTable& table, const ComparedVariables& variables,
                                          const SubsetAndRest& parts, const PartRunner& runner) {
    const std::size_t categorical = variables.Categorical.size();
    std::vector<VariableContrast> contrasts(categorical + variables.Continuous.size());
    RunParts(runner, contrasts.size(), [&](std::size_t part) {
        contrasts[part] = part < categorical
                              ? ContrastOfCategories(table.Variables[variables.Categorical[part]], parts)
                              : ContrastOfNumbers(table.Variables[variables.Continuous[part - categorical]], parts);
    });
    std::ranges::stable_sort(contrasts, [](const VariableContrast& left, const VariableContrast& right) {
        const bool hasLeft = left.Told != Evidence::NoCases;
        const bool hasRight = right.Told != Evidence::NoCases;
        return std::tuple(hasLeft, left.Distance) > std::tuple(hasRight, right.Distance);
    });
    return contrasts;
}

}  // namespace quillara
