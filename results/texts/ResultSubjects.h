#pragma once

#include <cstdint>

#include "engine/DrillDown.h"
#include "host/ResultSubject.h"

/// The side that a set of records stands for; steps are drill variables.
[[nodiscard]] constexpr ResultSide SideOf(CDrillDown::DrillSet* CDrillDown::*set) {
    return set == &CDrillDown::Reviews ? ResultSide::Review : ResultSide::Drill;
}

namespace drilldown {

/// Collects what a result is about, for the host. It never fails: without the language's memory the subject tells its
/// side alone, and the result itself goes on.
class SubjectWriter {
  public:
    SubjectWriter(CDrillDown& analysis, ResultSide side) : Analysis(analysis) { Subject.Side = side; }

    /// A variable without the names of its categories.
    void AddVariable(std::int16_t var) noexcept;
    /// A variable with the whole names of all its categories, in set order.
    void AddCategories(const Drill& record, bool hasMissing) noexcept;
    /// What was collected; the writer is empty after that.
    [[nodiscard]] ResultSubject Take() noexcept;

  private:
    template <typename Make>
    void Add(Make make) noexcept;

    CDrillDown& Analysis;
    ResultSubject Subject;
    bool IsComplete = true;
};

}  // namespace drilldown

/// The subject of a result that shows one variable by its categories.
[[nodiscard]] ResultSubject SubjectOf(CDrillDown& analysis, ResultSide side, const Drill& record,
                                      bool hasMissing) noexcept;
