#include "workbench/plots/Histograms3D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/TextFunctions.h"
#include "platform/OrderedBits.h"
#include "workbench/data/ValueText.h"

namespace quillara {
namespace {

constexpr std::size_t FewValues = 20;  // values of a variable without labels that are shown one by one
constexpr int IntervalParts = 10;
constexpr std::size_t MostPlaces = 200;  // along one side; rarer texts than these share the last
constexpr char OtherValues[] = "Other";
constexpr std::size_t NoPlace = std::numeric_limits<std::size_t>::max();

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

/// A value and the number of cases that have it.
struct ValueCount {
    double Value;
    std::size_t Cases;
};

/// Valid values, ascending, each once.
using ValueCounts = std::vector<ValueCount>;

ValueCounts Counted(std::vector<double> values) {
    std::ranges::sort(values);
    ValueCounts counts;
    for (const double value : values) {
        if (counts.empty() || counts.back().Value != value) {
            counts.push_back({value, 0});
        }
        ++counts.back().Cases;
    }
    return counts;
}

/// The same from counts by code, of which some may have one value.
ValueCounts Joined(ValueCounts counts) {
    std::ranges::sort(counts, {}, &ValueCount::Value);
    ValueCounts joined;
    for (const ValueCount& count : counts) {
        if (!joined.empty() && joined.back().Value == count.Value) {
            joined.back().Cases += count.Cases;
        } else {
            joined.push_back(count);
        }
    }
    return joined;
}

bool IsValid(const Variable& variable, double value) {
    return std::isfinite(value) && !variable.IsMissing(value);
}

template <typename Code>
ValueCounts CountsByCode(const Variable& variable, const PlotRows& rows) {
    const std::span<const double> values = variable.Values.ValuesOfCodes();
    const Code* codes = variable.Values.Stored().As<Code>();
    std::vector<std::size_t> cases(values.size());
    rows.ForEach([&](std::size_t row) { ++cases[codes[row]]; });
    ValueCounts counts;
    for (std::size_t code = 0; code < values.size(); ++code) {
        if (cases[code] > 0 && IsValid(variable, values[code])) {
            counts.push_back({values[code], cases[code]});
        }
    }
    return Joined(std::move(counts));
}

ValueCounts CountsOf(const Variable& variable, const PlotRows& rows) {
    switch (variable.Values.Stored().Form) {
        case ColumnForm::Codes8:
            return CountsByCode<std::uint8_t>(variable, rows);
        case ColumnForm::Codes16:
            return CountsByCode<std::uint16_t>(variable, rows);
        case ColumnForm::Integers:
        case ColumnForm::Doubles:
            break;
    }
    return Counted(ValidValues(variable, rows).Values);
}

/// How many values of a variable that is no text are shown one by one.
std::size_t MostShown(const Variable& variable) {
    return variable.HasLabels() ? MostPlaces : FewValues;
}

/// Whether there are no more than `most` distinct values.
bool AreFew(std::span<const double> values, std::size_t most) {
    std::set<double> distinct;
    return std::ranges::all_of(values, [&](double value) {
        distinct.insert(value);
        return distinct.size() <= most;
    });
}

/// The intervals of numbers without codes that have too many values for a place each, which shows soon: counting all
/// values takes long.
std::optional<NeatBins> BinsOfManyNumbers(const Variable& variable, const PlotRows& rows) {
    if (variable.Kind == ValueKind::Text || !variable.Values.ValuesOfCodes().empty()) {
        return {};
    }
    const std::vector<double> values = ValidValues(variable, rows).Values;
    if (AreFew(values, MostShown(variable))) {
        return {};
    }
    const auto [min, max] = RangeOf(values);
    return NeatBinsOver(min, max, IntervalParts);
}

/// The values of most cases, ascending: all of them, or as many as have a place of their own.
ValueCounts MostFrequent(ValueCounts counts) {
    if (counts.size() > MostPlaces) {
        std::ranges::stable_sort(counts, std::greater(), &ValueCount::Cases);
        counts.resize(MostPlaces);
        std::ranges::sort(counts, {}, &ValueCount::Value);
    }
    return counts;
}

/// Gives each value of a variable its place along one side.
class Side {
  public:
    Side(const Variable& variable, const PlotRows& rows)
        : Source(variable),
          MissingData(RangeNearlyEqualTo(variable.MissingCode)),
          Bins(BinsOfManyNumbers(variable, rows)) {
        if (!Bins) {
            FindPlaces(rows);
        }
        for (const double value : variable.Values.ValuesOfCodes()) {
            PlacesOfCodes.push_back(PlaceOf(value));
        }
    }

    /// The place of a case; NoPlace when its value isn't valid.
    [[nodiscard]] std::size_t PlaceAt(std::size_t row) const {
        const TableColumn& stored = Source.Values.Stored();
        switch (stored.Form) {
            case ColumnForm::Codes8:
                return PlacesOfCodes[stored.As<std::uint8_t>()[row]];
            case ColumnForm::Codes16:
                return PlacesOfCodes[stored.As<std::uint16_t>()[row]];
            case ColumnForm::Integers:
            case ColumnForm::Doubles:
                break;
        }
        return PlaceOf(Source.Values[row]);
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
    void FindPlaces(const PlotRows& rows) {
        ValueCounts counts = CountsOf(Source, rows);
        if (Source.Kind != ValueKind::Text && counts.size() > MostShown(Source)) {
            Bins = NeatBinsOver(counts.front().Value, counts.back().Value, IntervalParts);
            return;
        }
        HasOthers = counts.size() > MostPlaces;
        for (const ValueCount& count : MostFrequent(std::move(counts))) {
            Places.emplace(count.Value, Places.size());
        }
    }

    [[nodiscard]] std::size_t PlaceOf(double value) const {
        if (!std::isfinite(value) || MissingData.Contains(value)) {
            return NoPlace;
        }
        if (Bins) {
            return Bins->PlaceOf(value);
        }
        const auto place = Places.find(value);
        return place == Places.end() ? Places.size() : place->second;
    }

    const Variable& Source;
    NearlyEqualRange MissingData;
    std::optional<NeatBins> Bins;  // nothing: each value has a place
    std::map<double, std::size_t> Places;
    std::vector<std::size_t> PlacesOfCodes;
    bool HasOthers = false;  // values without a place of their own
};

}  // namespace

Histogram3DPlot Histogram3DOf(const DataTable& table, std::size_t x, std::size_t y, const PlotRows& rows) {
    const Side sideX(table.Variables[x], rows);
    const Side sideY(table.Variables[y], rows);
    Histogram3DPlot plot;
    plot.X = sideX.Described();
    plot.Y = sideY.Described();
    plot.Counts.resize(plot.X.Labels.size() * plot.Y.Labels.size());
    rows.ForEach([&](std::size_t row) {
        const std::size_t column = sideX.PlaceAt(row);
        const std::size_t line = sideY.PlaceAt(row);
        if (column != NoPlace && line != NoPlace) {
            ++plot.Counts[line * plot.X.Labels.size() + column];
            ++plot.Cases;
        }
    });
    return plot;
}

}  // namespace quillara
