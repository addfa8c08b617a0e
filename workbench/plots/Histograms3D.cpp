#include "workbench/plots/Histograms3D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "host/TextFunctions.h"
#include "workbench/data/ValueText.h"

namespace quillara {
namespace {

constexpr std::size_t FewValues = 20;  // values of a variable without labels that are shown one by one
constexpr int IntervalParts = 10;
constexpr std::size_t MostPlaces = 200;  // along one side; rarer texts than these share the last
constexpr char OtherValues[] = "Other";

std::string NumberText(double value) {
    constexpr short width = 8;
    std::array<char, 14> text{};
    RealToText(value, NumberFieldText, width, 0, text.data(), static_cast<short>(text.size()));
    return text.data();
}

std::string ValueText(const Variable& variable, double value) {
    if (const std::string* label = variable.LabelOf(value); label != nullptr && !label->empty()) {
        return *label;
    }
    const bool isNumber = variable.Kind == ValueKind::Number || variable.Kind == ValueKind::Text;
    return isNumber ? NumberText(value) : TextOfValue(variable.Kind, value);
}

/// The values of most cases, ascending: all of them, or as many as have a place of their own.
std::vector<double> MostFrequent(const Variable& variable, const PlotRows& rows, std::vector<double> distinct) {
    if (distinct.size() <= MostPlaces) {
        return distinct;
    }
    std::map<double, std::size_t> counts;
    for (const std::uint32_t row : rows) {
        ++counts[variable.Values[row]];
    }
    std::ranges::stable_sort(distinct, [&](double a, double b) { return counts[a] > counts[b]; });
    distinct.resize(MostPlaces);
    std::ranges::sort(distinct);
    return distinct;
}

/// Gives each value of a variable its place along one side.
class Side {
  public:
    Side(const Variable& variable, const PlotRows& rows) : Source(variable) {
        std::vector<double> distinct = ValidValues(variable, rows).Values;
        std::ranges::sort(distinct);
        distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
        if (variable.Kind == ValueKind::Text || distinct.size() <= (variable.HasLabels() ? MostPlaces : FewValues)) {
            HasOthers = distinct.size() > MostPlaces;
            for (const double value : MostFrequent(variable, rows, std::move(distinct))) {
                Places.emplace(value, Places.size());
            }
        } else {
            Bins = NeatBinsOver(distinct.front(), distinct.back(), IntervalParts);
        }
    }

    /// Nothing for a value that isn't valid.
    [[nodiscard]] std::optional<std::size_t> PlaceOf(std::uint32_t row) const {
        const double value = Source.Values[row];
        if (!std::isfinite(value) || Source.IsMissing(value)) {
            return std::nullopt;
        }
        if (Bins) {
            return Bins->PlaceOf(value);
        }
        const auto place = Places.find(value);
        return place == Places.end() ? Places.size() : place->second;
    }

    [[nodiscard]] Histogram3DSide Described() const {
        Histogram3DSide side{Source.Name, Source.LongName, {}};
        for (const auto& [value, place] : Places) {
            side.Labels.push_back(ValueText(Source, value));
        }
        if (HasOthers) {
            side.Labels.emplace_back(OtherValues);
        }
        if (Bins) {
            double low = Bins->Low;
            for (const double high : Bins->UpperBounds) {
                side.Labels.push_back(ValueText(Source, low) + "<x<=" + ValueText(Source, high));
                low = high;
            }
        }
        return side;
    }

  private:
    const Variable& Source;
    std::map<double, std::size_t> Places;
    bool HasOthers = false;  // values without a place of their own
    std::optional<NeatBins> Bins;
};

}  // namespace

Histogram3DPlot Histogram3DOf(const DataTable& table, std::size_t x, std::size_t y, const PlotRows& rows) {
    const Side sideX(table.Variables[x], rows);
    const Side sideY(table.Variables[y], rows);
    Histogram3DPlot plot;
    plot.X = sideX.Described();
    plot.Y = sideY.Described();
    plot.Counts.resize(plot.X.Labels.size() * plot.Y.Labels.size());
    for (const std::uint32_t row : rows) {
        const std::optional<std::size_t> column = sideX.PlaceOf(row);
        const std::optional<std::size_t> line = sideY.PlaceOf(row);
        if (column && line) {
            ++plot.Counts[*line * plot.X.Labels.size() + *column];
            ++plot.Cases;
        }
    }
    return plot;
}

}  // namespace quillara
