#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/Drill.h"
#include "engine/HostBuffer.h"
#include "engine/IntervalTally.h"
#include "engine/TallyRows.h"

namespace drilldown {

/// What a pass does with the valid values of a variable besides its statistics.
enum class CategoryCounting : std::uint8_t {
    None,  ///< nothing
    EveryValue,  ///< each value is a category, whatever the method has become
    DistinctByMethod,  ///< Methods 0 and 4 only: distinct values, distinct whole values
    ByMethod,  ///< the same, and under any other method into the intervals
    IntoIntervals,  ///< into the intervals whatever the method; distinct values count as intervals too
};

/// Where the values of one variable of a pass go. The feeder's method decides, the target's categories are counted;
/// they are one record unless two records of a set have the same variable, where the first is the target of both.
struct CategoryFeed {
    Drill* Feeder = nullptr;
    Drill* Target = nullptr;
    std::int16_t Kind = 0;
    CategoryCounting Counting = CategoryCounting::None;
};

/// Counts the values of one variable into the categories of its record, with the outcome of
/// Drill::AddDistinctValue and Drill::AddToInterval value by value. Values met before are found in a small table.
class CategoryTally {
  public:
    /// `shared`: other tallies of the pass may change the target too, so nothing is remembered between values.
    CategoryTally(CAnalysisSupport& host, const CategoryFeed& feed, bool shared);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return Known && Intervals; }
    /// Counts the values of some rows; missing ones are passed over.
    void Add(const TallyColumn& column, const WeightedRows& rows);

  private:
    enum class Way : std::uint8_t { Nothing, Distinct, WholeDistinct, Intervals };

    /// A value met before and the count that it adds to.
    struct KnownValue {
        std::uint64_t Bits;
        double* Count;
    };

    [[nodiscard]] Way PresentWay() const;
    [[nodiscard]] std::size_t KnownRoom() const;
    [[nodiscard]] const Drill* IntervalRecord() const;
    void AddDistinct(const TallyColumn& column, const WeightedRows& rows);
    void AddShared(const TallyColumn& column, const WeightedRows& rows);
    void AddNewDistinct(double value, double weight, KnownValue& known);
    void ForgetKnown();

    CategoryFeed Feed;
    bool Shared;
    HostBuffer<KnownValue> Known;
    IntervalTally Intervals;
};

}  // namespace drilldown
