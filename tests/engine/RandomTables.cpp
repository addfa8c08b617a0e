#include "tests/engine/RandomTables.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <string_view>
#include <tuple>

namespace drilltest {

namespace {

using Values = std::vector<double>;
using ValueMaker = double (*)(Random&);

double Quarter(Random& random) {
    return static_cast<double>(Pick(random, 40)) / 4.0 - 2.5;
}

double WholeValue(Random& random) {
    return static_cast<double>(Pick(random, 9)) - 3.0;
}

double Fraction(Random& random) {
    return std::uniform_real_distribution<double>(-100.0, 100.0)(random);
}

double NearlyEqualValue(Random& random) {
    static constexpr std::array<double, 4> bases{1.0, -2.5, 0.0, 1e-310};
    static constexpr std::array<std::int64_t, 11> units{0, 14, 15, 16, 17, -14, -15, -16, -17, 30, 31};
    return Moved(bases[Pick(random, bases.size())], units[Pick(random, units.size())]);
}

double SpecialValue(Random& random) {
    static constexpr double largest = std::numeric_limits<double>::max();
    static const Values values{NA,     -NA,     Infinity, -Infinity, -0.0,   0.0, 5e-324,       -5e-324,
                               1e-300, largest, -largest, 1.7e308,   -1e300, 1.0, 2147483648.0, 0.5};
    return values[Pick(random, values.size())];
}

constexpr std::array<ValueMaker, 5> ValueMakers{WholeValue, Quarter, Fraction, NearlyEqualValue, SpecialValue};

Values MakeValues(std::int32_t cases, const std::function<double()>& make) {
    Values values(static_cast<std::size_t>(cases));
    std::generate(values.begin(), values.end(), make);
    return values;
}

constexpr double OutsideMissing = -9999;

/// 1 for the cases of a group, missing for the others.
Values Group(Random& random, std::int32_t cases) {
    return MakeValues(cases, [&] { return Chance(random, 6) ? OutsideMissing : 1.0; });
}

/// As many values as a record keeps, or a few less or more, in the cases of a group; the last one that is new comes in
/// one of the last of these cases. The others have some of them, or some of their own.
Values ManyValues(Random& random, const Values& group) {
    static constexpr std::size_t counts[] = {2046, 2047, 2048, 2048, 2048, 2049};
    const std::size_t distinct = counts[Pick(random, std::size(counts))];
    const double scale = Chance(random, 3) ? 0.25 : 1.0;
    const bool hasNearlyEqual = Chance(random, 3);
    const auto valueAt = [&](std::size_t place) {
        const double value = static_cast<double>(place * 7919 % distinct) * scale;
        return hasNearlyEqual && Chance(random, 8) ? Moved(value, Chance(random, 2) ? 7 : -8) : value;
    };
    auto cases = static_cast<std::size_t>(std::ranges::count(group, 1.0));
    std::size_t unused = distinct;
    const auto nextOfGroup = [&] {
        if (Pick(random, cases--) < unused) {
            return valueAt(--unused);
        }
        return unused == distinct || Chance(random, 20) ? OutsideMissing
                                                        : valueAt(unused + Pick(random, distinct - unused));
    };
    const double own = Chance(random, 3) ? 5000.0 : 0.0;
    Values values;
    for (const double ofGroup : group) {
        values.push_back(ofGroup == 1.0 ? nextOfGroup() : valueAt(Pick(random, distinct)) + own);
    }
    return values;
}

/// The missing code lies outside of the data, or is one of the values, or lies 15 or 16 units away from one.
quillara::Variable ValueVariable(Random& random, TableStyle style, std::string name, std::int32_t cases) {
    const ValueMaker make = ValueMakers[Pick(random, style == TableStyle::Anything ? ValueMakers.size() : 2)];
    const bool outside = style != TableStyle::Anything || cases == 0 || !Chance(random, 3);
    Values values = MakeValues(cases, [&] { return outside && Chance(random, 8) ? OutsideMissing : make(random); });
    static constexpr std::array<std::int64_t, 3> units{0, 15, 16};
    const double near = outside ? OutsideMissing : values[Pick(random, values.size())];
    const double code = outside || !std::isfinite(near) ? near : Moved(near, units[Pick(random, units.size())]);
    return RawNumbers(std::move(name), std::move(values), code);
}

quillara::Variable WeightVariable(Random& random, TableStyle style, std::int32_t cases) {
    static const Values weights{1.0,
                                2.0,
                                0.5,
                                1.25,
                                0.0,
                                0.4,
                                2.5,
                                3.0,
                                -1.0,
                                -0.4,
                                0.1,
                                99.0,
                                Moved(0.0, 15),
                                Moved(0.0, 16),
                                4503599627370498.0};
    const std::size_t count = style == TableStyle::Anything ? weights.size() : 4;
    const double code = Chance(random, 2) ? 99.0 : -9999;
    return RawNumbers("weight", MakeValues(cases, [&] { return weights[Pick(random, count)]; }), code);
}

/// A group, two variables of many values in it, and a weight that may leave the other cases out.
quillara::DataTable TableOfManyValues(Random& random, std::int32_t cases) {
    const Values group = Group(random, cases);
    quillara::Variable weight = WeightVariable(random, TableStyle::ManyValues, cases);
    if (Chance(random, 2)) {
        Values weights(weight.Values.begin(), weight.Values.end());
        std::ranges::transform(weights, group, weights.begin(), [](double w, double g) { return g == 1.0 ? w : 0.0; });
        weight.Values = std::move(weights);
    }
    return TableOf({RawNumbers("group", group, OutsideMissing),
                    RawNumbers("a", ManyValues(random, group), OutsideMissing),
                    RawNumbers("b", ManyValues(random, group), OutsideMissing), std::move(weight)});
}

/// What a number is to the last bit; all NaN are the same.
std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(std::isnan(x) ? NA : x);
}

auto Fields(const Drill& record) {
    return std::tuple(record.VarNo, record.VarType, std::string_view(record.Name), record.ValidCount,
                      Bits(record.ValidWeight), record.MissingCount, Bits(record.MissingWeight), Bits(record.Min),
                      Bits(record.Max), Bits(record.Mean), Bits(record.SumSquares), record.ExactCount, record.NeatCount,
                      Bits(record.StepSize), Bits(record.StepStart), record.StartAtMin, record.NU, record.UserInterv,
                      record.Method, record.Isset, record.Order, record.ChosenCategory, record.CategorySet.size());
}

auto Fields(const Categories& category, bool names) {
    return std::tuple(category.Kind, Bits(category.Count), Bits(category.Upper), Bits(category.Lower),
                      names ? std::string_view(category.Name) : std::string_view());
}

}  // namespace

quillara::DataTable RandomTable(Random& random, TableStyle style, std::int32_t cases) {
    if (style == TableStyle::ManyValues) {
        return TableOfManyValues(random, cases);
    }
    std::vector<quillara::Variable> variables;
    const std::size_t count = 2 + Pick(random, 4);
    for (std::size_t i = 0; i < count; ++i) {
        variables.push_back(ValueVariable(random, style, std::string(1, static_cast<char>('a' + i)), cases));
    }
    variables.push_back(WeightVariable(random, style, cases));
    return TableOf(std::move(variables));
}

VariableLists RandomLists(Random& random, std::size_t variables) {
    VariableLists lists;
    for (std::size_t var = 1; var <= variables; ++var) {
        const std::size_t place = Pick(random, 8);
        if (place >= 1 && place <= 4) {
            lists.First.push_back(static_cast<std::int16_t>(var));
        }
        if (place >= 4) {
            lists.Second.push_back(static_cast<std::int16_t>(var));
        }
    }
    std::shuffle(lists.First.begin(), lists.First.end(), random);
    // The dialog takes no more entries than there are variables.
    lists.Second.resize(std::min(lists.Second.size(), variables - lists.First.size()));
    return lists;
}

void CategorizeAnyhow(Random& random, Drill& record, const quillara::Column& values) {
    const bool farApart = std::any_of(values.begin(), values.end(), [](double x) { return std::fabs(x) > 1e4; });
    const auto method = Chance(random, 3) ? std::int32_t{DistinctValues} : static_cast<std::int32_t>(Pick(random, 6));
    record.Method = farApart && method == StepIntervals ? NeatIntervals : method;
    record.ExactCount = static_cast<std::int32_t>(Pick(random, 12));
    record.NeatCount = static_cast<std::int32_t>(Pick(random, 15));
    record.StepSize = Chance(random, 8) ? 0.0 : static_cast<double>(1 + Pick(random, 80)) / 4.0;
    record.StepStart = Quarter(random);
    record.StartAtMin = static_cast<std::int32_t>(Pick(random, 2));
    record.NU = static_cast<std::int32_t>(Pick(random, 6));
    std::generate_n(record.UserInterv.begin(), record.NU, [&] { return Quarter(random); });
    std::sort(record.UserInterv.begin(), record.UserInterv.begin() + record.NU);
    record.RebuildCategories();
}

void ExpectSame(const std::vector<Drill>& left, const std::vector<Drill>& right, bool names, const std::string& where) {
    ASSERT_EQ(left.size(), right.size()) << where;
    const auto fields = [names](const Categories& category) { return Fields(category, names); };
    for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(Fields(left[i]), Fields(right[i])) << where;
        ASSERT_TRUE(std::ranges::equal(left[i].CategorySet, right[i].CategorySet, {}, fields, fields))
            << where << '\n'
            << TextOf(left[i]) << '\n'
            << TextOf(right[i]);
    }
}

}  // namespace drilltest
