#pragma once

#include <cstdint>
#include <vector>

#include "engine/DrillFilter.h"

class CDrillDown;

// The case filters that the host calls for every case of a plot that it computes itself. They have no argument for the
// analysis, so what they need is module-level: the steps, compiled once for a command, and the pair of a 3D histogram.

/// Places of the two variables of the 3D histogram being drawn, from 0.
extern std::int16_t Histogram3DXVar;
extern std::int16_t Histogram3DYVar;

/// 0 keeps a case, 1 drops it. `values` holds all values of the case, variable 1 at index 0. If neither is null, `x`
/// and `y` take the two values of the 3D histogram of a case that is kept. The first two arguments play no part.
/// Outside of a ReviewCaseFilterScope every case is kept.
int ReviewCaseFilter(char* reserved1, long* reserved2, const double* values, float* x, float* y);

/// The same; `x` and `y` are left alone when the case is dropped.
int ReviewCaseFilterXY(char* reserved1, long* reserved2, const double* values, float* x, float* y);

namespace drilldown {

/// Gives the filters the steps of an analysis as they are now, for as long as it lives, and tells the host of them as
/// conditions. Scopes don't overlap.
class ReviewCaseFilterScope {
  public:
    explicit ReviewCaseFilterScope(CDrillDown& analysis);
    ReviewCaseFilterScope(const ReviewCaseFilterScope&) = delete;
    ReviewCaseFilterScope& operator=(const ReviewCaseFilterScope&) = delete;
    ~ReviewCaseFilterScope();

    /// False when there was no memory; no plot may then be made.
    explicit operator bool() const { return Compiled; }

  private:
    CDrillDown& Analysis;
    std::vector<CaseCondition> Conditions;
    bool Compiled = false;
};

}  // namespace drilldown
