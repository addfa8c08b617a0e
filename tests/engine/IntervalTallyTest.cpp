// Values in intervals found by arithmetic, against the walk of the set value by value.

#include "engine/IntervalTally.h"

#include <algorithm>
#include <cmath>

#include "engine/OrderedSums.h"
#include "tests/engine/RandomTables.h"

namespace drilltest {

using namespace drilldown;

namespace {

constexpr double Largest = std::numeric_limits<double>::max();
constexpr double Smallest = std::numeric_limits<double>::denorm_min();

/// How bounds follow each other.
struct BoundKind {
    const char* Name;
    double (*Next)(Random& random, double bound, double step);
};

double ByStep(Random&, double bound, double step) {
    return bound + step;
}
double AtOddDistances(Random& random, double bound, double step) {
    return bound + step * static_cast<double>(1 + Pick(random, 40));
}
double FartherAndFarther(Random& random, double bound, double step) {
    return bound + step * std::ldexp(1.0, static_cast<int>(Pick(random, 60)));
}
double AsNearAsCategoriesLie(Random& random, double bound, double) {
    return Moved(bound, 16 + static_cast<int>(Pick(random, 3)));
}

constexpr BoundKind Kinds[] = {{"by steps", ByStep},
                               {"at odd distances", AtOddDistances},
                               {"farther and farther", FartherAndFarther},
                               {"near", AsNearAsCategoriesLie}};

/// A record with intervals whose counts begin whole or not.
Drill RecordOf(Random& random, const BoundKind& kind, std::size_t intervals) {
    Drill record(1, ContinuousVariable, 0, "x");
    record.Method = Chance(random, 2) ? StepIntervals : NeatIntervals;
    const int scale = static_cast<int>(Pick(random, 3) == 0 ? Pick(random, 2040) : 1018 + Pick(random, 12)) - 1050;
    const double step = std::ldexp(1.0 + static_cast<double>(Pick(random, 7)) / 7.0, scale);
    double bound = step * (static_cast<double>(Pick(random, 2000)) - 1000.0);
    for (std::size_t i = 0; i < intervals; ++i) {
        const double count = Chance(random, 5) ? 0.1 : static_cast<double>(Pick(random, 3));
        record.CategorySet.insert(Categories{1, count, bound, "", bound});
        bound = kind.Next(random, bound, step);
    }
    return record;
}

std::vector<double> ValuesAround(Random& random, const Drill& record) {
    std::vector<double> values{0.0, -0.0, Smallest, -Smallest, Largest, -Largest, Infinity, -Infinity, NA, -9999.0};
    std::vector<double> bounds;
    for (const Categories& category : record.CategorySet) {
        bounds.push_back(category.Upper);
    }
    for (int i = 0; i < 400; ++i) {
        const double bound = bounds[Pick(random, bounds.size())];
        const double next = bounds[Pick(random, bounds.size())];
        values.push_back(Moved(bound, static_cast<int>(Pick(random, 5)) - 2));
        values.push_back(bound + (next - bound) * static_cast<double>(Pick(random, 100)) / 99.0);
    }
    std::ranges::shuffle(values, random);
    return values;
}

/// Weighted cases in the order that they come in.
void AddTo(const IntervalTally& tally, const Drill& record, const TallyColumn& column, const WeightedRows& rows) {
    if (rows.Weights == nullptr) {
        tally.Add(column, rows);
        return;
    }
    std::vector<double> sums;
    std::ranges::transform(record.CategorySet, std::back_inserter(sums), &Categories::Count);
    sums.push_back(0.0);
    for (std::size_t done = 0; done < rows.Count; done += GatheredValuesLimit) {
        const WeightedRows part = rows.Part(done, std::min(GatheredValuesLimit, rows.Count - done));
        IntervalPlaces places;
        tally.FindPlaces(column, part, places);
        const OrderedSums variable{sums.data(), places.data()};
        AddInOrder({&variable, 1}, part.Weights, part.Count);
    }
    for (std::size_t place = 0; place < tally.Size(); ++place) {
        tally.CountAt(place) = sums[place];
    }
}

}  // namespace

TEST(IntervalTally, CountsAsTheWalkOfTheSetDoes) {
    DrillBench bench(Road::Columns);
    bench.Open(quillara::DataTable{});
    Random random(3);
    constexpr std::size_t sizes[] = {1, 2, 3, 8, 10, 13, 16, 17, 63, 64, 500, 2048, 20'000};
    for (int round = 0; round < 2000 && !HasFailure(); ++round) {
        const BoundKind& kind = Kinds[static_cast<std::size_t>(round) % std::size(Kinds)];
        const std::size_t size = sizes[Pick(random, round % 50 == 0 ? std::size(sizes) : std::size(sizes) - 2)];
        Drill counted = RecordOf(random, kind, size);
        Drill walked = counted;
        const std::vector<double> values = ValuesAround(random, counted);
        std::vector<double> weights(values.size());
        std::ranges::generate(weights, [&] { return static_cast<double>(1 + Pick(random, 9)) / 3.0; });
        std::vector<std::int32_t> list;
        for (std::int32_t row = 0; row < std::ssize(values); ++row) {
            if (!Chance(random, 3)) {
                list.push_back(row);
            }
        }
        const bool weighted = Chance(random, 2);
        WeightedRows rows{nullptr, weighted ? weights.data() : nullptr, values.size()};
        if (Chance(random, 2)) {
            rows.Rows = list.data();
            rows.Count = list.size();
        }
        const NearlyEqualRange missing = RangeNearlyEqualTo(-9999.0);
        IntervalTally tally(bench.Analysis(), &counted);
        ASSERT_TRUE(tally);
        AddTo(tally, counted, {{ColumnForm::Doubles, values.data()}, missing}, rows);
        for (std::size_t i = 0; i < rows.Count; ++i) {
            const double value = values[static_cast<std::size_t>(rows.RowAt(i))];
            if (!missing.Contains(value)) {
                walked.AddToInterval(value, rows.WeightAt(i));
            }
        }
        ExpectSame({counted}, {walked}, false, std::string(kind.Name) + ", round " + std::to_string(round));
    }
}

}  // namespace drilltest
