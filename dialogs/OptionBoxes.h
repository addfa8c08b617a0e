#pragma once

#include <array>
#include <cstdint>

#include "engine/DrillDown.h"
#include "resources/ControlIds.h"

namespace drilldown {

/// A check box of the startup dialog and the flag of the analysis that it shows and toggles.
struct OptionBox {
    int Id;
    std::int16_t CDrillDown::*Flag;
    bool IsOfBoxPlots;  ///< what they show, which changes no counts and matters with continuous review variables; else
                        ///< how cases count
};

// clang-format off
inline constexpr std::array OptionBoxes{
    // Id                             Flag                                  IsOfBoxPlots
    OptionBox{WeightedMomentsBox,     &CDrillDown::WeightedMoments,         false},
    OptionBox{ReviewCasewiseBox,      &CDrillDown::RVCasewiseDeletionOfMD,  false},
    OptionBox{MedianQuartileRangeBox, &CDrillDown::PlotMedianQuartileRange, true},
    OptionBox{MeanSEAndSDBox,         &CDrillDown::PlotMeanSEAndSD,         true},
    OptionBox{MeanSD196TimesSDBox,    &CDrillDown::PlotMeanSD196TimesSD,    true},
    OptionBox{MeanSE196TimesSEBox,    &CDrillDown::PlotMeanSE196TimesSE,    true},
    OptionBox{CountMissingBox,        &CDrillDown::CountMD,                 false},
    OptionBox{CasewiseBox,            &CDrillDown::CasewiseDeletionOfMD,    false},
};
// clang-format on

}  // namespace drilldown
