#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/CodeCounts.h"
#include "engine/Drill.h"
#include "engine/HostBuffer.h"
#include "engine/IntervalTally.h"
#include "engine/OrderedSums.h"
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

/// How a pass goes through the values of a variable.
struct TallyRoad {
    TableColumn Whole;  ///< its column in the table; Entries null: only blocks are known
    NearlyEqualRange Missing{};
    bool Weighted = false;
    std::size_t Threads = 1;  ///< that may count it at once
};

/// Counts the values of one variable into the categories of its record, with the outcome of
/// Drill::AddDistinctValue and Drill::AddToInterval value by value. Values met before are found in a small table, or by
/// their code. Where no order of the cases makes a difference codes are counted by themselves, and into the categories
/// when the pass has ended. Where it does, and values have places known before, the sums of the places are added to in
/// that order, side by side with those of other variables.
class CategoryTally {
  public:
    /// `shared`: other tallies of the pass may change the target too, so nothing is remembered between values.
    CategoryTally(CAnalysisSupport& host, const CategoryFeed& feed, const TallyRoad& road, bool shared);

    /// False when there was no memory.
    explicit operator bool() const noexcept {
        return Known && KnownCodes && Uncounted && ByCode && Intervals && PlacesOfCodes && Sums;
    }
    /// Whether several threads may count different rows at once.
    [[nodiscard]] bool TakesAnyOrder() const noexcept { return IsByCode; }
    /// Whether values are counted by their places, through SumsOf and not through Add.
    [[nodiscard]] bool IsByPlace() const noexcept { return ByPlace; }
    /// The sums of the places, and the places of the values of some rows, at most GatheredValuesLimit.
    [[nodiscard]] OrderedSums SumsOf(const TallyColumn& column, const WeightedRows& rows, IntervalPlaces& places) const;
    /// Whether there is anything to count.
    [[nodiscard]] bool IsNeeded() const { return Shared || PresentWay() != Way::Nothing; }
    /// Whether the same values counted again from zero, into the categories that there are then, give the same counts;
    /// `counting` says how they would be counted.
    [[nodiscard]] bool WouldRecountAlike(CategoryCounting counting) const;
    /// From here on the order of the cases makes a difference: sums of their weights are rounded.
    void KeepOrder();
    /// Counts the values of some rows; missing ones are passed over.
    void Add(const TallyColumn& column, const WeightedRows& rows, std::size_t thread);
    /// Brings the record up to all that was counted.
    void Finish();

  private:
    enum class Way : std::uint8_t { Nothing, Distinct, WholeDistinct, Intervals };

    /// A value met before and the count that it adds to.
    struct KnownValue {
        std::uint64_t Bits;
        double* Count;
    };

    [[nodiscard]] Way PresentWay() const;
    [[nodiscard]] bool CountsDistinct() const;
    [[nodiscard]] bool HasCodes() const;
    [[nodiscard]] bool IsCounted(double value) const;
    [[nodiscard]] bool CountsAllValues() const;
    [[nodiscard]] bool ValuesAreApart() const;
    [[nodiscard]] std::size_t KnownRoom() const;
    [[nodiscard]] std::size_t CodeRoom() const;
    [[nodiscard]] std::size_t Codes() const { return static_cast<std::size_t>(Road.Whole.ValueCount); }
    [[nodiscard]] std::size_t Places() const;
    [[nodiscard]] std::size_t SumRoom() const;
    void StartSums();
    void FinishSums();
    void FinishDistinct(double value, double sum);
    void FinishCodes();
    void FinishCode(double value, double count);
    template <typename Code>
    void FindPlaces(const Code* codes, const WeightedRows& rows, IntervalPlaces& places) const;
    template <typename Code>
    void AddCodes(const Code* codes, const WeightedRows& rows);
    void AddDistinct(const TallyColumn& column, const WeightedRows& rows);
    void AddShared(const TallyColumn& column, const WeightedRows& rows);
    double* CountNewDistinct(double value, double weight);
    void ForgetKnown();

    CategoryFeed Feed;
    TallyRoad Road;
    bool Shared;
    bool IsCoded;  // the whole column has codes
    bool IsApart;  // and none of their values counts in the category of another
    bool IsByCode;  // codes are counted by themselves
    bool ByPlace = false;  // in the order of the cases
    IntervalTally Intervals;
    HostBuffer<KnownValue> Known;
    HostBuffer<double*> KnownCodes;  // the count of each code; null: not met yet
    HostBuffer<double> Uncounted;  // of codes that count nowhere
    CodeCounts ByCode;
    HostBuffer<std::uint32_t> PlacesOfCodes;  // among intervals
    HostBuffer<double> Sums;  // of each place, and of what counts nowhere
};

}  // namespace drilldown
