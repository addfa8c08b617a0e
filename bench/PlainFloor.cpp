#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <numeric>

#include "bench/FloorColumns.h"

namespace {

using Rows = std::vector<std::int32_t>;

/// Keeps the rows for which `test` holds; without branches on the data, as a careful author of plain loops would.
template <typename Test>
void KeepRows(Rows& rows, Test test) {
    std::size_t kept = 0;
    for (const std::int32_t row : rows) {
        rows[kept] = row;
        kept += test(static_cast<std::size_t>(row)) ? 1 : 0;
    }
    rows.resize(kept);
}

Rows RemainingRows(const FloorColumns& columns, const FloorSetting& setting) {
    Rows rows(columns.Cases());
    std::iota(rows.begin(), rows.end(), 0);
    if (setting.Weighted) {
        KeepRows(rows, [&](std::size_t row) { return columns.Weights[row] > 0.0; });
    }
    for (int step = 0; step < setting.Steps; ++step) {
        const double* values = columns.Categorical[static_cast<std::size_t>(step)].Values.data();
        KeepRows(rows, [&](std::size_t row) { return values[row] == static_cast<double>(KeptCategory); });
    }
    return rows;
}

struct Sums {
    double Least = std::numeric_limits<double>::max();
    double Greatest = std::numeric_limits<double>::lowest();
    double Sum = 0.0;
    double Squares = 0.0;
    double Missing = 0.0;
    std::array<double, FloorCategories> Counts{};

    [[nodiscard]] double Total() const {
        return std::accumulate(Counts.begin(), Counts.end(), Least + Greatest + Sum + Squares + Missing);
    }
};

/// Gives each row with its value and weight to `take`.
template <typename Take>
void WithWeights(const FloorColumn& column, const Rows& rows, const double* weights, Take take) {
    const double* values = column.Values.data();
    for (const std::int32_t row : rows) {
        take(values[row], weights == nullptr ? 1.0 : weights[row]);
    }
}

template <bool Categories>
Sums SumsOf(const FloorColumn& column, const Rows& rows, const double* weights) {
    Sums sums;
    WithWeights(column, rows, weights, [&sums, missing = column.Missing](double x, double weight) {
        if (x == missing) {
            sums.Missing += weight;
            return;
        }
        sums.Sum += weight * x;
        sums.Squares += weight * x * x;
        sums.Least = std::min(sums.Least, x);
        sums.Greatest = std::max(sums.Greatest, x);
        if constexpr (Categories) {
            sums.Counts[static_cast<std::size_t>(x)] += weight;
        }
    });
    return sums;
}

void CountIntervals(Sums& sums, const FloorColumn& column, const Rows& rows, const double* weights) {
    const double scale = FloorIntervals / (sums.Greatest - sums.Least);
    WithWeights(column, rows, weights, [&, missing = column.Missing](double x, double weight) {
        if (x != missing) {
            sums.Counts[static_cast<std::size_t>((x - sums.Least) * scale)] += weight;
        }
    });
}

}  // namespace

double RunPlainFloor(const FloorColumns& columns, const FloorSetting& setting) {
    const double* weights = setting.Weighted ? columns.Weights.data() : nullptr;
    const Rows rows = RemainingRows(columns, setting);
    double all = 0.0;
    for (std::size_t i = static_cast<std::size_t>(setting.Steps); i < columns.Categorical.size(); ++i) {
        all += SumsOf<true>(columns.Categorical[i], rows, weights).Total();
    }
    for (const FloorColumn& column : columns.Continuous) {
        Sums sums = SumsOf<false>(column, rows, weights);
        CountIntervals(sums, column, rows, weights);
        all += sums.Total();
    }
    return all;
}
