#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/DrillDown.h"

namespace drilldown {

/// Which of the two selections a variable of a pass belongs to.
enum PassSide : std::size_t { DrillSide = 0, ReviewSide = 1, PassSides = 2 };

/// The members of an analysis that hold one selection: two lists with their lengths, and the casewise option.
struct SelectionMembers {
    std::int16_t* CDrillDown::*Categorical;
    std::int16_t CDrillDown::*NoCategorical;
    std::int16_t* CDrillDown::*Continuous;
    std::int16_t CDrillDown::*NoContinuous;
    std::int16_t CDrillDown::*CasewiseOption;

    [[nodiscard]] std::span<const std::int16_t> CategoricalOf(const CDrillDown& analysis) const {
        return {analysis.*Categorical, static_cast<std::size_t>(analysis.*NoCategorical)};
    }
    [[nodiscard]] std::span<const std::int16_t> ContinuousOf(const CDrillDown& analysis) const {
        return {analysis.*Continuous, static_cast<std::size_t>(analysis.*NoContinuous)};
    }
};

/// By PassSide.
inline constexpr std::array<SelectionMembers, PassSides> Selections{{
    {&CDrillDown::Categorical, &CDrillDown::NoCategorical, &CDrillDown::Continuous, &CDrillDown::NoContinuous,
     &CDrillDown::CasewiseDeletionOfMD},
    {&CDrillDown::RVCategorical, &CDrillDown::NoRVCategorical, &CDrillDown::RVContinuous, &CDrillDown::NoRVContinuous,
     &CDrillDown::RVCasewiseDeletionOfMD},
}};

}  // namespace drilldown
