#include "workbench/charts/CountTable.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "workbench/charts/CategoryAxis.h"

namespace quillara {
namespace {

QString CaptionOf(const Histogram3DSide& side) {
    const QString name = Shown(side.Variable);
    return side.LongName.empty() ? name : name + QStringLiteral(": ") + Shown(side.LongName);
}

std::vector<QString> NamesOf(const Histogram3DSide& side) {
    std::vector<QString> names(side.Labels.size());
    std::ranges::transform(side.Labels, names.begin(), Shown);
    return names;
}

}  // namespace

CountTable::CountTable(const Histogram3DPlot& plot) {
    NamesOfColumns = NamesOf(plot.X);
    NamesOfRows = NamesOf(plot.Y);
    CaptionOfColumns = CaptionOf(plot.X);
    CaptionOfRows = CaptionOf(plot.Y);
    CaptionOfCounts = Shown(plot.CountName);
    Counts = plot.Counts;
    std::ranges::replace_if(
        Counts, [](double count) { return !std::isfinite(count); }, 0.0);
    HighestCount = Counts.empty() ? 0.0 : std::ranges::max(Counts);
    Total = std::accumulate(Counts.begin(), Counts.end(), 0.0);
}

double CountTable::CountOf(std::size_t column, std::size_t row) const {
    const std::size_t place = PlaceOf(column, row);
    return place < Counts.size() ? Counts[place] : 0.0;
}

QString CountTable::TipOf(std::size_t column, std::size_t row) const {
    return CountTip(Isolated(NamesOfColumns[column]) + QStringLiteral(", ") + Isolated(NamesOfRows[row]),
                    CountOf(column, row), Total);
}

}  // namespace quillara
