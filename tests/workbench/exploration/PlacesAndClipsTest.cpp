#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/exploration/TableClip.h"
#include "workbench/exploration/WindowPlaces.h"

namespace quillara {
namespace {

bool Overlap(const WindowPlace& one, const WindowPlace& other) {
    return one.X < other.X + other.Width && other.X < one.X + one.Width && one.Y < other.Y + other.Height &&
           other.Y < one.Y + one.Height;
}

TEST(WindowPlaces, TilesFillTheAreaWithoutOverlap) {
    for (const WindowSize area : {WindowSize{1280, 860}, {860, 760}, {301, 977}, {3000, 200}}) {
        for (std::size_t count = 0; count <= 17; ++count) {
            const std::vector<WindowPlace> places = TiledPlaces(count, area);
            ASSERT_EQ(places.size(), count);
            int covered = 0;
            for (std::size_t i = 0; i < count; ++i) {
                covered += places[i].Width * places[i].Height;
                for (std::size_t j = 0; j < i; ++j) {
                    EXPECT_FALSE(Overlap(places[i], places[j]));
                }
            }
            EXPECT_EQ(covered, count == 0 ? 0 : area.Width * area.Height) << count;
        }
    }
    for (std::size_t count = 0; count <= 60; ++count) {
        const WindowSize area{900, 740};
        const std::vector<WindowPlace> places = TiledPlaces(count, area, {170, 170});
        const auto isLow = [](const WindowPlace& place) { return place.Height < 170 || place.Width < 170; };
        EXPECT_TRUE(std::ranges::none_of(places, isLow)) << count;
        const bool isWithin = count == 0 || places.back().Y + places.back().Height == area.Height;
        EXPECT_EQ(isWithin, count <= 20) << count;
    }
    const std::vector<WindowPlace> six = TiledPlaces(6, {1280, 860});
    EXPECT_EQ(six.front().Width, 426);
    EXPECT_EQ(six.front().Height, 430);
    // Those that are too many for the area go on below it.
    const std::vector<WindowPlace> many = TiledPlaces(31, {1000, 700}, {240, 190});
    EXPECT_EQ(many.front().Width, 250);
    EXPECT_EQ(many.front().Height, 190);
    EXPECT_EQ(many.back().Y + many.back().Height, 8 * 190);
    EXPECT_EQ(TiledPlaces(2, {100, 100}, {240, 190}).back().Y, 190);
}

TEST(WindowPlaces, NewWindowsCoverNoOtherWhileThereIsRoom) {
    const WindowSize area{1000, 700};
    std::vector<WindowPlace> places;
    for (int i = 0; i < 9; ++i) {
        const WindowPlace place = FreePlace(places, {480, 340}, area);
        const bool isFree = std::ranges::none_of(places, [&](const auto& other) { return Overlap(place, other); });
        EXPECT_EQ(isFree, i < 4) << i;
        EXPECT_LE(place.X + place.Width, area.Width);
        EXPECT_LE(place.Y + place.Height, area.Height);
        places.push_back(place);
    }
    EXPECT_EQ(FreePlace({}, {2000, 100}, area).Width, 1000);
}

TEST(TableClip, CellsGoAsTabsAndAsHtml) {
    ShownTable table;
    table.Title = "A & B";
    table.CaptionLines = {"N Total: 3"};
    table.Corner = "city";
    table.Columns = {{{"Count"}, false}, {{"Largest", "name"}, true}};
    table.Rows = {{"Rome", {{"1", {}}, {"x<1", {}}}}, {"Oslo", {{"2", {}}, {"", {}}}}};
    const TableClip all = ClipOf(table, AllOf(table));
    EXPECT_EQ(all.Tabs, "A & B\nN Total: 3\ncity\tCount\tLargest name\nRome\t1\tx<1\nOslo\t2\t\n");
    EXPECT_THAT(all.Html, testing::AllOf(testing::HasSubstr("<b>A &amp; B</b>"), testing::HasSubstr(">x&lt;1</td>"),
                                         testing::HasSubstr("<td align=\"right\">1</td>")));
    EXPECT_EQ(ClipOf(table, {{1}, {0}}).Tabs, "2");
    EXPECT_EQ(ClipOf(table, {{0, 1}, {0}}).Tabs, "city\tCount\nRome\t1\nOslo\t2\n");
}

}  // namespace
}  // namespace quillara
