#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "workbench/plots/CaseColumns.h"
#include "workbench/statistics/ValueGroups.h"

namespace quillara {

/// A category or a range, and its share of the subset and of the rest, from 0 to 1.
struct SharePair {
    std::string Name;
    double InSubset = 0.0;
    double InRest = 0.0;
};

/// How much can be made of a difference.
enum class Evidence : std::uint8_t {
    NoCases,  ///< the subset or the rest has no valid value
    FewCases,  ///< fewer than VariableContrast::Few in the subset or in the rest
    WithinChance,  ///< no more than what chance gives in one of twenty random subsets of these sizes
    Clear,
};

/// In what a variable differs between a subset and the rest.
struct VariableContrast {
    static constexpr int Few = 30;

    std::string Variable;
    bool IsNumber = false;  ///< compared as a number, else by its categories
    /// From 0, alike, to 1, nothing in common: the total variation distance of categories, half the sum of the
    /// differences of their shares; the Kolmogorov-Smirnov distance of numbers, the largest difference between the
    /// shares below any number.
    double Distance = 0.0;
    double CramersV = 0.0;  ///< of subset or rest by category; NaN for numbers, and where it isn't defined
    /// The mean of the subset less that of the rest, over the root of the mean of their variances; NaN for categories,
    /// and where it isn't defined, as that of one case.
    double Difference = 0.0;
    std::vector<SharePair> Over;  ///< what the subset has more of, the largest difference first; few of them
    std::vector<SharePair> Under;  ///< and less
    std::int64_t CasesInSubset = 0;  ///< with a valid value
    std::int64_t CasesInRest = 0;
    Evidence Told = Evidence::Clear;
};

/// Two parts of a table's cases, and what these weigh.
struct SubsetAndRest {
    const RowSet& Subset;
    const RowSet& Rest;
    const CaseWeights& Weights;
};

/// Each reads its variable once. Under weights shares are those of the sums of weights, and what chance gives is told
/// by the number of cases that as many equal weights would be (Kish: the squared sum over the sum of squares).
[[nodiscard]] VariableContrast ContrastOfNumbers(const Variable& variable, const SubsetAndRest& parts);
[[nodiscard]] VariableContrast ContrastOfCategories(const Variable& variable, const SubsetAndRest& parts);

/// Variables by their indexes.
struct ComparedVariables {
    std::vector<std::size_t> Categorical;
    std::vector<std::size_t> Continuous;
};

/// All of them, those with the largest distance first; those without cases last.
[[nodiscard]] std::vector<VariableContrast> ContrastsOf(const DataTable& table, const ComparedVariables& variables,
                                                        const SubsetAndRest& parts, const PartRunner& runner = {});

}  // namespace quillara
