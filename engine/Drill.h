#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <string>

#include "engine/Categories.h"

namespace drilldown {

/// How the values of a variable are cut into categories. The numbers are stored and scripted; they never change.
enum CategorizationMethod : std::int32_t {
    DistinctValues = 0,  ///< one category per distinct value
    ExactIntervals = 1,  ///< (a, b], equal widths, half a step beyond both ends
    NeatIntervals = 2,  ///< (a, b], round bounds
    StepIntervals = 3,  ///< [a, b), from a start value by a step size
    IntegerCategories = 4,  ///< one category per distinct whole value
    UserIntervals = 5,  ///< (a, b], between the user's boundaries
};

/// What of a variable's values is kept, by plain comparison with the bounds of a category.
enum class KeepRule : std::uint8_t {
    Equal,  ///< exactly Upper
    OpenClosed,  ///< (Lower, Upper]
    ClosedOpen,  ///< [Lower, Upper)
    MissingOnly,  ///< the variable is missing
    Everything,  ///< the category is of an unknown method
    Nothing,  ///< there is no such category
};

/// Type of a variable; fixed by the list in which the user placed it.
inline constexpr std::int16_t CategoricalVariable = 0;
inline constexpr std::int16_t ContinuousVariable = 1;

/// Most distinct values that a record keeps before it turns to neat intervals.
inline constexpr std::size_t DistinctValueLimit = 2048;
/// Room for the user's boundaries of Method 5.
inline constexpr std::size_t UserBoundaryRoom = 100;

/// What the result of AddDistinctValue tells.
enum DistinctValueResult : int { SetEmptied = 0, ValueInserted = 1, ValueCounted = 2 };

}  // namespace drilldown

/// Everything the analysis knows about one variable: its statistics of the last pass, its categorization and its
/// categories. A drill step is such a record with one ChosenCategory. Sets of records are ordered by Order alone.
class Drill {
  public:
    /// A record without statistics and categories; `order` is its place in its set.
    Drill(std::int16_t varNo, std::int16_t varType, std::int16_t order, std::string name);

    /// Whether values are categories as they come: Methods 0 and 4.
    [[nodiscard]] bool TakesDistinctValues() const;
    /// Number of intervals that the method asks for; NeatCount where it has no such number.
    [[nodiscard]] std::int32_t IntervalCount() const;

    // Counting

    /// Adds weight to the category of a value, or makes the category, for Methods 0 and 4. A value that arrives when
    /// the set already holds DistinctValueLimit categories empties the set, sets Method to 2 and is itself dropped.
    /// Gives one of DistinctValueResult.
    int AddDistinctValue(double value, std::int16_t kind, double weight, const std::string& name);
    /// The category that a value counts in under Methods 0 and 4: the first whose Upper is nearly equal to it; the end
    /// of CategorySet when there is none. Infinities and NaN have none.
    [[nodiscard]] std::set<Categories>::const_iterator FindDistinctValue(double value) const;
    /// Adds weight to the first interval whose Upper is at or above the value (Method 3: above it). There is no test
    /// of Lower, so what lies below the first interval is counted in it; what lies above the last, nowhere. Gives 1.
    int AddToInterval(double value, double weight);

    // Building of categories. Each cuts the present Min .. Max anew, sets Isset to 0 and leaves the counts at 0.0.

    /// Empties the categories and sets Isset to 0. Gives 1.
    int ClearCategories();
    /// Method 1. Gives 1; 0 when there is no range; -1 when ExactCount is below 1.
    int MakeExactCategories();
    /// Method 2. Gives 1; 0 when there is no range.
    int MakeNeatCategories();
    /// Method 3. Gives 1.
    int MakeStepCategories();
    /// Method 5. Gives 1; 0 when there are no boundaries, and then the old categories stay.
    int MakeUserCategories();
    /// The builder of the present Method; nothing for an unknown one. Gives 1.
    int RebuildCategories();

    // Data, in the order of the record

    std::int16_t VarNo;  ///< number of the variable, from 1
    std::int16_t VarType;  ///< CategoricalVariable or ContinuousVariable
    std::string Name;  ///< display name of the variable
    std::int32_t ValidCount = 0;  ///< cases with a valid value in the last pass
    double ValidWeight = 0.0;  ///< sum of their weights
    std::int32_t MissingCount = 0;  ///< cases counted as missing in the last pass
    double MissingWeight = 0.0;  ///< sum of their weights
    double Min = 0.0;  ///< smallest valid value
    double Max = 0.0;  ///< largest valid value
    double Mean = 0.0;  ///< weighted mean
    double SumSquares = 0.0;  ///< weighted sum of squared deviations from the mean
    std::int32_t Method;  ///< a CategorizationMethod
    std::int32_t ExactCount = 10;  ///< number of exact intervals
    std::int32_t NeatCount = 10;  ///< approximate number of neat intervals
    double StepSize = 1.0;  ///< width of the intervals of Method 3
    double StepStart = 0.0;  ///< their first bound when StartAtMin is 0
    std::int32_t StartAtMin = 1;  ///< 1: they start at Min
    std::array<double, drilldown::UserBoundaryRoom>
        UserInterv{};  ///< the user's boundaries, ascending; NU of them are set
    std::int32_t NU = 0;  ///< number of the user's boundaries
    std::int16_t Isset = 0;  ///< 1: the counts are those of the present filter and categorization
    std::int16_t Order;  ///< place in its set
    std::int32_t ChosenCategory = -1;  ///< the category kept, in set order; the size of the set for Missing; -1: none
    std::set<Categories> CategorySet;  ///< the categories, ascending by Upper
};

namespace drilldown {

/// Which values a method takes as categories as they come.
enum class ValuesTaken : std::uint8_t { None, Every, Whole };

/// What a method is given besides its number.
enum class MethodInput : std::uint8_t {
    None,
    Count,  ///< a number of intervals
    Steps,  ///< step size, and a start value unless it starts at the minimum
    Boundaries,
};

/// What sets a method apart from the others.
struct MethodFacts {
    KeepRule Rule;  ///< which values belong to a category
    ValuesTaken Values;
    int (Drill::*Build)();  ///< cuts the categories anew
    MethodInput Input;
    std::int32_t Drill::*Count;  ///< the number of intervals in the record; null: none is asked for
};

// clang-format off
/// By CategorizationMethod.
inline constexpr std::array<MethodFacts, 6> Methods{{
    // Rule                 Values              Build                        Input                    Count
    {KeepRule::Equal,      ValuesTaken::Every, &Drill::ClearCategories,     MethodInput::None,       nullptr},
    {KeepRule::OpenClosed, ValuesTaken::None,  &Drill::MakeExactCategories, MethodInput::Count,      &Drill::ExactCount},
    {KeepRule::OpenClosed, ValuesTaken::None,  &Drill::MakeNeatCategories,  MethodInput::Count,      &Drill::NeatCount},
    {KeepRule::ClosedOpen, ValuesTaken::None,  &Drill::MakeStepCategories,  MethodInput::Steps,      nullptr},
    {KeepRule::Equal,      ValuesTaken::Whole, &Drill::ClearCategories,     MethodInput::None,       nullptr},
    {KeepRule::OpenClosed, ValuesTaken::None,  &Drill::MakeUserCategories,  MethodInput::Boundaries, nullptr},
}};
// clang-format on

[[nodiscard]] constexpr bool IsMethod(std::int32_t method) noexcept {
    return method >= 0 && method < static_cast<std::int32_t>(Methods.size());
}

/// What an unknown method has: it builds nothing, and a step with it keeps everything.
inline constexpr MethodFacts UnknownMethod{KeepRule::Everything, ValuesTaken::None, nullptr, MethodInput::None,
                                           nullptr};

[[nodiscard]] constexpr const MethodFacts& FactsOf(std::int32_t method) noexcept {
    return IsMethod(method) ? Methods[static_cast<std::size_t>(method)] : UnknownMethod;
}

}  // namespace drilldown

[[nodiscard]] inline bool operator<(const Drill& left, const Drill& right) noexcept {
    return left.Order < right.Order;
}

/// A record of a set for changing it. Who changes Order keeps the order of the set.
[[nodiscard]] inline Drill& Editable(const Drill& record) noexcept {
    return const_cast<Drill&>(record);
}
