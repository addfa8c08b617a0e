#include "engine/PlainCases.h"

#include <algorithm>
#include <numeric>

#include "engine/WholeDivision.h"

using namespace drilldown;

namespace {

bool IsWholeDivisor(double x) {
    return x >= 0.0 && x <= LargestWholeDivisor && x == static_cast<double>(static_cast<std::int64_t>(x));
}

/// The same rows, told by the first where none between is left out.
WeightedRows WithoutList(const WeightedRows& rows) {
    const bool gaps =
        rows.Rows != nullptr && rows.Rows[rows.Count - 1] - rows.Rows[0] != static_cast<std::int32_t>(rows.Count) - 1;
    return gaps ? rows : WeightedRows{nullptr, rows.Weights, rows.Count, rows.RowAt(0)};
}

/// Other columns come first before this one goes on, so what it goes on with is asked for now.
void GatherDoubles(const double* entries, const WeightedRows& rows, double* values) {
    constexpr std::size_t ahead = PlainCases::Limit;
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double* entry = entries + rows.Rows[i];
        __builtin_prefetch(entry + ahead);
        values[i] = *entry;
    }
}

}  // namespace

const MomentCases& PlainCases::Take(std::span<const TallyColumn> columns, const WeightedRows& rows,
                                    const MomentLanes& lanes) {
    const WeightedRows near = WithoutList(rows);
    Cases.Count = rows.Count;
    for (std::size_t place = 0; place < columns.size(); ++place) {
        Cases.Columns[place] = Gather(columns[place].Entries, near, place);
    }
    // Spare lanes repeat the last variable; what they come to isn't stored.
    std::fill(Cases.Columns.begin() + static_cast<std::ptrdiff_t>(columns.size()), Cases.Columns.end(),
              Cases.Columns[columns.size() - 1]);
    TakeWeights(rows, lanes);
    return Cases;
}

const double* PlainCases::Gather(const TableColumn& column, const WeightedRows& rows, std::size_t place) {
    const bool doubles = column.Form == ColumnForm::Doubles;
    if (rows.Rows == nullptr && doubles) {
        return column.As<double>() + rows.First;
    }
    double* const values = Gathered[place].data();
    if (doubles) {
        GatherDoubles(column.As<double>(), rows, values);
        return values;
    }
    WithValues(column, [&](auto valueOf) {
        for (std::size_t i = 0; i < rows.Count; ++i) {
            values[i] = valueOf(rows.RowAt(i));
        }
    });
    return values;
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
