#pragma once

#include <array>
#include <string_view>

#include "host/Charts.h"
#include "resources/ControlIds.h"

namespace quillara {

/// Where box or whiskers of a plot reach.
enum class BoxReach : unsigned char { Quartiles, FarthestWithoutOutliers, Error, Deviation };

/// What one type of box-whisker plot shows and how that is called.
struct BoxTypeFacts {
    BoxType Type;
    std::string_view Word;  ///< on the command line
    int CheckBox;  ///< of the startup dialog
    BoxReach Box;  ///< from the middle: the median with quartiles, else the mean
    BoxReach Whisker;
    double WhiskerFactor;  ///< errors or deviations that the whiskers reach
    const char* MiddleName;
    std::array<const char*, 2> BoxNames;  ///< of the columns of tables: lower and upper end
    std::array<const char*, 2> WhiskerNames;
    const char* BoxText;  ///< in the legend of a picture
    const char* WhiskerText;

    [[nodiscard]] constexpr bool ShowsMedian() const { return Box == BoxReach::Quartiles; }
};

inline constexpr double NormalInterval = 1.96;  ///< standard deviations that hold 95 % of normal values

// clang-format off
inline constexpr std::array<BoxTypeFacts, 4> BoxTypes{{
    // Type                          Word      Check box               Box                  Whisker                           Factor          Middle    Lower and upper end of the box        of the whiskers                        In the legend
    {BoxType::MedianQuartilesRange, "median", MedianQuartileRangeBox, BoxReach::Quartiles, BoxReach::FarthestWithoutOutliers, 1.0,            "Median", {"Lower\nquartile", "Upper\nquartile"}, {"Lower\nwhisker", "Upper\nwhisker"},   "25%-75%",        "Range without outliers"},
    {BoxType::MeanSEAndSD,          "se",     MeanSEAndSDBox,         BoxReach::Error,     BoxReach::Deviation,               1.0,            "Mean",   {"Mean-SE", "Mean+SE"},                 {"Mean-SD", "Mean+SD"},                 "Mean \u00B1 SE", "Mean \u00B1 SD"},
    {BoxType::MeanSDAnd196SD,       "sd",     MeanSD196TimesSDBox,    BoxReach::Deviation, BoxReach::Deviation,               NormalInterval, "Mean",   {"Mean-SD", "Mean+SD"},                 {"Mean\n-1.96*SD", "Mean\n+1.96*SD"},   "Mean \u00B1 SD", "Mean \u00B1 1.96*SD"},
    {BoxType::MeanSEAnd196SE,       "1.96se", MeanSE196TimesSEBox,    BoxReach::Error,     BoxReach::Error,                   NormalInterval, "Mean",   {"Mean-SE", "Mean+SE"},                 {"Mean\n-1.96*SE", "Mean\n+1.96*SE"},   "Mean \u00B1 SE", "Mean \u00B1 1.96*SE"},
}};
// clang-format on

/// The facts of a type; those of the first for a number that is none.
[[nodiscard]] constexpr const BoxTypeFacts& FactsOf(BoxType type) {
    for (const BoxTypeFacts& facts : BoxTypes) {
        if (facts.Type == type) {
            return facts;
        }
    }
    return BoxTypes.front();
}

}  // namespace quillara
