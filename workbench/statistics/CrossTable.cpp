#include "workbench/statistics/CrossTable.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/OrderedBits.h"
#include "workbench/statistics/ChiSquare.h"
#include "workbench/statistics/Distribution.h"

namespace quillara {
namespace {

/// Sums along one side of a table that is counted over all groups.
std::vector<double> Totals(const std::vector<double>& counts, std::size_t columns, bool ofRows) {
    const std::size_t rows = columns == 0 ? 0 : counts.size() / columns;
    std::vector<double> totals(ofRows ? rows : columns);
    for (std::size_t i = 0; i < counts.size(); ++i) {
        totals[ofRows ? i / columns : i % columns] += counts[i];
    }
    return totals;
}

std::vector<std::size_t> PlacesWithCases(const std::vector<double>& totals) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < totals.size(); ++i) {
        if (totals[i] > 0.0) {
            places.push_back(i);
        }
    }
    return places;
}

CrossSide SideOf(const Variable& variable, const ValueGroups& groups, const std::vector<double>& totals,
                 const std::vector<std::size_t>& places) {
    CrossSide side{variable.Name, variable.LongName, {}, {}, groups.Names().size() - places.size()};
    for (const std::size_t place : places) {
        side.Names.push_back(groups.Names()[place]);
        side.Totals.push_back(totals[place]);
    }
    return side;
}

/// Counts over all groups of both sides; groups without cases are still among them.
class CellCounts {
  public:
    CellCounts(const ValueGroups& rows, const ValueGroups& columns)
        : Rows(rows), Columns(columns), Counts(rows.Names().size() * columns.Names().size()) {}

    void Count(std::size_t row, double weight) {
        const std::int32_t down = Rows.GroupAt(row);
        const std::int32_t across = Columns.GroupAt(row);
        if (down == ValueGroups::NoGroup || across == ValueGroups::NoGroup) {
            ++LeftOut;
            return;
        }
        ++Cases;
        Squares += weight * weight;
        Counts[static_cast<std::size_t>(down) * Columns.Names().size() + static_cast<std::size_t>(across)] += weight;
    }

    const ValueGroups& Rows;
    const ValueGroups& Columns;
    std::vector<double> Counts;
    double Squares = 0.0;  ///< sum of those of the weights
    std::int64_t Cases = 0;
    std::int64_t LeftOut = 0;
};

void CountAll(CellCounts& cells, const RowSet& cases, const CaseWeights& weights) {
    cases.ForEach([&](std::size_t row) {
        const double weight = weights.Values.empty() ? 1.0 : weights.Values[row];
        if (IsPositiveWeight(weight) && std::isfinite(weight)) {
            cells.Count(row, weight);
        }
    });
}

}  // namespace

Association AssociationOf(const std::vector<double>& counts, std::size_t columns) {
    const std::vector<double> down = Totals(counts, columns, true);
    const std::vector<double> across = Totals(counts, columns, false);
    const std::size_t least = std::min(PlacesWithCases(down).size(), PlacesWithCases(across).size());
    if (least < 2) {
        return {Undefined, Undefined};
    }
    const double total = std::accumulate(down.begin(), down.end(), 0.0);
    double sum = 0.0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const double expected = down[i / columns] * across[i % columns] / total;
        const double difference = counts[i] - expected;
        sum += expected > 0.0 ? difference * difference / expected : 0.0;
    }
    return {sum, std::sqrt(sum / total / static_cast<double>(least - 1))};
}

double CrossTable::SmallestExpected() const {
    if (Counts.empty()) {
        return Undefined;
    }
    return std::ranges::min(Rows.Totals) * std::ranges::min(Columns.Totals) / Total;
}

CrossTable CrossTableOf(const DataTable& table, const CrossVariable& rows, const CrossVariable& columns,
                        const RowSet& cases, const CaseWeights& weights) {
    const Variable& down = table.Variables.at(rows.Index);
    const Variable& across = table.Variables.at(columns.Index);
    const ValueGroups downGroups(down, cases, rows.How);
    const ValueGroups acrossGroups(across, cases, columns.How);
    CellCounts cells(downGroups, acrossGroups);
    CountAll(cells, cases, weights);

    const std::size_t width = acrossGroups.Names().size();
    const std::vector<double> downTotals = Totals(cells.Counts, width, true);
    const std::vector<double> acrossTotals = Totals(cells.Counts, width, false);
    const std::vector<std::size_t> downPlaces = PlacesWithCases(downTotals);
    const std::vector<std::size_t> acrossPlaces = PlacesWithCases(acrossTotals);
    CrossTable found;
    found.Rows = SideOf(down, downGroups, downTotals, downPlaces);
    found.Columns = SideOf(across, acrossGroups, acrossTotals, acrossPlaces);
    for (const std::size_t row : downPlaces) {
        for (const std::size_t column : acrossPlaces) {
            found.Counts.push_back(cells.Counts[row * width + column]);
        }
    }
    found.Total = std::accumulate(found.Counts.begin(), found.Counts.end(), 0.0);
    found.Cases = cells.Cases;
    found.LeftOut = cells.LeftOut;
    const Association association = AssociationOf(found.Counts, acrossPlaces.size());
    found.ChiSquare = association.ChiSquare;
    found.CramersV = association.CramersV;
    found.Freedom = static_cast<int>((std::max<std::size_t>(downPlaces.size(), 1) - 1) *
                                     (std::max<std::size_t>(acrossPlaces.size(), 1) - 1));
    found.Chance = ChanceOfChiSquare(found.ChiSquare, found.Freedom);
    found.EffectiveCases = cells.Squares > 0.0 ? found.Total * found.Total / cells.Squares : Undefined;
    found.EffectiveChance = ChanceOfChiSquare(found.ChiSquare * found.EffectiveCases / found.Total, found.Freedom);
    return found;
}

}  // namespace quillara
