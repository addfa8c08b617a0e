#include "workbench/windows/DialogPlaces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillara {
namespace {

using testing::ElementsAre;

TEST(DialogPlaces, AControlThatNeedsMoreMovesAllBehindItAndKeepsWhatStandsInLine) {
    const ControlExtent extents[] = {{0, 2, 3}, {3, 5, 9}, {2, 5, 4}, {5, 6, 0}};
    EXPECT_THAT(PlacesAlong(extents, 6, 2), ElementsAre(0, 2, 4, 6, 8, 15, 17));
    EXPECT_THAT(PlacesAlong({}, 2, 1.5), ElementsAre(0, 1.5, 3));
}

TEST(DialogPlaces, RoomThatIsLeftIsSpreadOrGivenToWhatGrows) {
    std::vector<double> spread = {0, 1, 4};
    SpreadOver(spread, 2);
    EXPECT_THAT(spread, ElementsAre(0, 1, 4));
    SpreadOver(spread, 8);
    EXPECT_THAT(spread, ElementsAre(0, 2, 8));

    const ControlExtent list{0, 6, 0, true};
    const ControlExtent button{1, 2, 0};  // the list may grow behind it only
    std::vector<double> grown = {0, 1, 2, 3, 4, 5, 6, 7};
    GrowInto(grown, std::vector{list, button}, 10, 5);
    EXPECT_THAT(grown, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));  // too short a run
    GrowInto(grown, std::vector{list, button}, 10, 4);
    EXPECT_THAT(grown, ElementsAre(0, 1, 2, 3, 4, 5, 9, 10));
    GrowInto(grown, std::vector{list, button}, 5, 4);
    EXPECT_EQ(grown.back(), 10);
}

}  // namespace
}  // namespace quillara
