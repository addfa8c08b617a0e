#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// One variable as the floors have it: plain arrays, whatever the program makes of a table.
struct FloorColumn {
    std::vector<double> Values;  ///< one per case; missing data is Missing
    std::vector<std::uint16_t> Codes;  ///< the values as codes where they are categories, 0 for missing data
    double Missing = 0.0;
};

/// The data of a floor.
struct FloorColumns {
    std::vector<FloorColumn> Categorical;
    std::vector<FloorColumn> Continuous;
    std::vector<double> Weights;

    [[nodiscard]] std::size_t Cases() const { return Weights.size(); }
};

/// What a floor runs on: the first `Steps` categorical variables keep one category each.
struct FloorSetting {
    int Steps = 0;
    bool Weighted = false;
};

/// The category that a step keeps; the most frequent of each variable.
inline constexpr std::uint16_t KeptCategory = 1;
/// Intervals into which a continuous variable is counted.
inline constexpr int FloorIntervals = 10;
/// Codes of categories are below this.
inline constexpr std::size_t FloorCategories = 512;

// The floors do the work of a drill step: find the cases that remain; range, missing data and sums of x and x * x of
// every variable still open, without any division; counts of categories; then counts of the intervals of the new range.
// They keep no told order of updates, test missing data by plain equality, know that categories are small whole
// numbers, and have no blocks, cancel or case selection. Each gives a figure that depends on everything it has summed.

/// Plain loops over columns of doubles, one thread.
[[nodiscard]] double RunPlainFloor(const FloorColumns& columns, const FloorSetting& setting);

/// Codes of categories, bitmaps of cases and sums in vectors, on so many threads.
[[nodiscard]] double RunCodesFloor(const FloorColumns& columns, const FloorSetting& setting, int threads);
