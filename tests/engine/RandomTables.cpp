// Random tables and random operations on them.

#include <algorithm>
#include <cmath>

#include "tests/engine/Exploration.h"

namespace drilltest {

namespace {

using Values = std::vector<double>;

double NearlyEqualValue(Random& random) {
    static constexpr std::array<double, 4> bases{1.0, -2.5, 0.0, 1e-310};
    static constexpr std::array<std::int64_t, 11> units{0, 14, 15, 16, 17, -14, -15, -16, -17, 30, 31};
    return Moved(bases[Pick(random, bases.size())], units[Pick(random, units.size())]);
}

double SpecialValue(Random& random) {
    static constexpr double largest = std::numeric_limits<double>::max();
    static const std::array<double, 16> values{NA,     -NA,     Infinity,     -Infinity, -0.0,     0.0,
                                               5e-324, -5e-324, 1e-300,       largest,   -largest, 1.7e308,
                                               1.0,    -1e300,  2147483648.0, 0.5};
    return values[Pick(random, values.size())];
}

double Quarters(Random& random, int range) {
    return static_cast<double>(Pick(random, static_cast<std::size_t>(range))) / 4.0 - range / 16.0;
}

double RandomValue(Random& random, std::size_t kind) {
    switch (kind) {
        case 0:
            return static_cast<double>(Pick(random, 9)) - 3.0;
        case 1:
            return Quarters(random, 40);
        case 2:
            return std::uniform_real_distribution<double>(-100.0, 100.0)(random);
        case 3:
            return NearlyEqualValue(random);
        default:
            return SpecialValue(random);
    }
}

constexpr std::size_t ValueKinds = 5;

/// A missing code that is met: outside of the data, one of the values, or 15 or 16 units away from one.
double ChooseMissingCode(Random& random, Values& values) {
    if (values.empty() || !Chance(random, 3)) {
        for (double& value : values) {
            value = Chance(random, 8) ? -9999 : value;
        }
        return -9999;
    }
    const double value = values[Pick(random, values.size())];
    static constexpr std::array<std::int64_t, 3> units{0, 15, 16};
    return std::isfinite(value) ? Moved(value, units[Pick(random, units.size())]) : value;
}

quillara::Variable AnyVariable(Random& random, std::string name, std::int32_t cases) {
    const std::size_t kind = Pick(random, ValueKinds);
    Values values(static_cast<std::size_t>(cases));
    std::generate(values.begin(), values.end(), [&] { return RandomValue(random, kind); });
    const double code = ChooseMissingCode(random, values);
    return RawNumbers(std::move(name), std::move(values), code);
}

quillara::Variable PlainVariable(Random& random, std::string name, std::int32_t cases) {
    const bool whole = Chance(random, 2);
    Values values(static_cast<std::size_t>(cases));
    std::generate(values.begin(), values.end(), [&] {
        return Chance(random, 9) ? -9999 : whole ? static_cast<double>(Pick(random, 6)) : Quarters(random, 60);
    });
    return RawNumbers(std::move(name), std::move(values));
}

quillara::Variable ManyValued(Random& random, std::string name, std::int32_t cases) {
    const std::size_t distinct = 2000 + Pick(random, 200);
    Values values(static_cast<std::size_t>(cases));
    std::size_t place = 0;
    for (double& value : values) {
        // Now and then the same value again, so that a full set is also met by a value that it has just counted.
        place += Chance(random, 4) ? 0 : 1;
        value = static_cast<double>((place * 7919) % distinct) - (Chance(random, 50) ? 0.5 : 0.0);
    }
    return RawNumbers(std::move(name), std::move(values));
}

quillara::Variable WeightVariable(Random& random, TableStyle style, std::int32_t cases) {
    static const Values any{0.0, 0.4, 0.5, 1.0, 1.25, 2.5, 3.0, -1.0, -0.4, 0.1, 99.0, Moved(0.0, 15), Moved(0.0, 16)};
    static const Values plain{1.0, 2.0, 0.5, 1.25};
    const Values& weights = style == TableStyle::Anything ? any : plain;
    Values values(static_cast<std::size_t>(cases));
    std::generate(values.begin(), values.end(), [&] { return weights[Pick(random, weights.size())]; });
    return RawNumbers("weight", std::move(values), Chance(random, 2) ? 99.0 : -9999);
}

quillara::VariableLists RandomLists(Random& random, std::size_t variables) {
    quillara::VariableLists lists;
    for (std::size_t var = 1; var <= variables; ++var) {
        // A variable may stand in none, in one or in both.
        const std::size_t place = Pick(random, 8);
        if (place >= 1 && place <= 4) {
            lists.First.insert(lists.First.begin() + static_cast<std::ptrdiff_t>(Pick(random, lists.First.size() + 1)),
                               static_cast<std::int16_t>(var));
        }
        if (place >= 4) {
            lists.Second.push_back(static_cast<std::int16_t>(var));
        }
    }
    // The dialog takes no more entries than there are variables.
    lists.Second.resize(std::min(lists.Second.size(), variables - lists.First.size()));
    return lists;
}

Drill RandomMethod(Random& random) {
    Drill method(0, 0, 0, "");
    method.Method = static_cast<std::int32_t>(Pick(random, 6));
    method.ExactCount = static_cast<std::int32_t>(Pick(random, 12));
    method.NeatCount = static_cast<std::int32_t>(Pick(random, 15));
    method.StepSize = Chance(random, 8) ? 0.0 : static_cast<double>(1 + Pick(random, 80)) / 4.0;
    method.StepStart = Quarters(random, 60);
    method.StartAtMin = static_cast<std::int32_t>(Pick(random, 2));
    method.NU = static_cast<std::int32_t>(Pick(random, 6));
    std::generate_n(method.UserInterv.begin(), method.NU, [&] { return Quarters(random, 60); });
    std::sort(method.UserInterv.begin(), method.UserInterv.begin() + method.NU);
    return method;
}

}  // namespace

std::size_t Pick(Random& random, std::size_t count) {
    return random() % count;
}

quillara::DataTable RandomTable(Random& random, TableStyle style, std::int32_t cases) {
    const auto make = style == TableStyle::Anything       ? AnyVariable
                      : style == TableStyle::PlainNumbers ? PlainVariable
                                                          : ManyValued;
    std::vector<quillara::Variable> variables;
    const std::size_t count = style == TableStyle::ManyValues ? 2 : 2 + Pick(random, 4);
    for (std::size_t i = 0; i < count; ++i) {
        variables.push_back(make(random, std::string(1, static_cast<char>('a' + i)), cases));
    }
    variables.push_back(WeightVariable(random, style, cases));
    return TableOf(std::move(variables));
}

Operation RandomOperation(Random& random, const quillara::DataTable& table, Operation::Verb verb) {
    Operation operation;
    operation.What = verb;
    operation.Lists = RandomLists(random, table.Variables.size());
    std::generate(operation.Flags.begin(), operation.Flags.end(),
                  [&] { return static_cast<std::int16_t>(Pick(random, 2)); });
    operation.Place = Pick(random, 64);
    operation.Row = Pick(random, 64);
    operation.InReviews = Chance(random, 4);
    operation.Method = RandomMethod(random);
    if (!Chance(random, 3)) {
        operation.Weight = table.Variables.size() - 1;
    }
    if (!Chance(random, 3)) {
        operation.Selection.resize(static_cast<std::size_t>(table.Cases));
        std::generate(operation.Selection.begin(), operation.Selection.end(),
                      [&] { return Chance(random, 5) ? CaseResult::Skip : CaseResult::Use; });
    }
    return operation;
}

}  // namespace drilltest
