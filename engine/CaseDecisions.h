#pragma once

#include <cstdint>

#include "engine/Rounding.h"
#include "host/Commons.h"

class CDrillDown;

namespace drilldown {

/// What the host gives with the values of a case.
struct CaseExtras {
    int Weighted = 0;
    double Weight = 0.0;
    int Tag = 0;
};

/// Stores the weight of a case that was read, and writes its name into the text line.
void StoreCase(CDrillDown& analysis, int caseNumber, const CaseExtras& extras);

/// How a stored case weight counts in a pass.
enum class WeightRule : std::uint8_t {
    None,  ///< no weight is in force: every case weighs 1.0
    Fractional,  ///< as it is stored
    Whole,  ///< rounded to a whole number, halves away from zero
};

[[nodiscard]] inline WeightRule WeightRuleOf(const Wght_com& weight, std::int16_t weightedMoments) {
    if (weight.Active == 0) {
        return WeightRule::None;
    }
    return weightedMoments == 1 ? WeightRule::Fractional : WeightRule::Whole;
}

[[nodiscard]] inline double CountingWeight(WeightRule rule, double stored) {
    switch (rule) {
        case WeightRule::None:
            return 1.0;
        case WeightRule::Fractional:
            return stored;
        case WeightRule::Whole:
            break;
    }
    return RoundHalfAwayFromZero(stored);
}

}  // namespace drilldown
