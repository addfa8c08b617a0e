#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"

namespace quillara {

/// How the values of a variable are put into groups, by the names and numbers of an analysis's own methods.
enum class CutMethod : std::uint8_t {
    Distinct = 0,  ///< each value
    Exact = 1,  ///< Count intervals (a, b] of equal width around equally spaced points from minimum to maximum
    Neat = 2,  ///< about Count intervals (a, b] of round bounds
    Step = 3,  ///< intervals [a, b) of one width
    Integer = 4,  ///< each whole value; others belong to no group
    Bounds = 5,  ///< intervals (a, b] between bounds, and what lies below and above
};

struct Cut {
    CutMethod Method = CutMethod::Distinct;
    int Count = 0;  ///< exact, neat
    double StepSize = 0.0;  ///< step; above 0
    double StepStart = 0.0;  ///< step, unless StartAtMin; what lies below counts in the first interval
    bool StartAtMin = false;
    std::vector<double> Bounds{};  ///< bounds: rising, at least one
};

/// The groups of a variable's valid values in some cases, ascending.
class ValueGroups {
  public:
    static constexpr std::int32_t NoGroup = -1;
    static constexpr std::size_t MostGroups = 2047;

    /// Without a cut of one's own: each value of texts, of labelled variables and of few distinct values; about ten
    /// round intervals of others. Throws DataError when there would be more than MostGroups.
    ValueGroups(const Variable& variable, const RowSet& rows, const std::optional<Cut>& cut = {});

    /// As people read them: labels, dates, bounds.
    [[nodiscard]] const std::vector<std::string>& Names() const { return GroupNames; }
    /// The group of a case; NoGroup when its value isn't valid or belongs to none.
    [[nodiscard]] std::int32_t GroupAt(std::size_t row) const;
    /// Whether groups are intervals.
    [[nodiscard]] bool AreIntervals() const { return HasIntervals; }

  private:
    void TakeValues(std::vector<double> values, bool onlyWhole);
    void TakeBounds(const std::vector<double>& bounds, const Cut& cut);
    [[nodiscard]] std::int32_t GroupOf(double value) const;
    [[nodiscard]] std::string NameOf(double lower, double upper) const;

    const Variable& Source;
    std::vector<std::string> GroupNames;
    std::vector<double> Ends;  // of each group: its largest value, or the bound that it is cut at
    bool HasIntervals = false;
    bool IsOpenAbove = false;  // intervals are [a, b)
    bool OnlyWhole = false;
    std::vector<std::int32_t> GroupsOfCodes;  // of a column of codes
};

/// A value as people read it: its label, a date, a number.
[[nodiscard]] std::string ValueName(const Variable& variable, double value);

/// Whether a value stands for data, as all that counts cases sees it.
[[nodiscard]] bool IsValidValue(const Variable& variable, double value);

}  // namespace quillara
