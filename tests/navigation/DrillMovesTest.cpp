// One step down or up: which records move, and how the sets are numbered behind it.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class DrillMoves : public DrillTest {
  protected:
    void SetUp() override {
        Open({Numbers("X", {1, 1, 2}), Numbers("Y", {1, 2, 2}), Numbers("Z", {1, 1, 1}), Numbers("W", {1, 1, 1})});
    }

    /// "Z0 Y1 | X0": steps and open variables with their Order.
    std::string Order() const {
        std::string text;
        for (const Drill& step : *Analysis().DrillUps) {
            text += step.Name + std::to_string(step.Order) + ' ';
        }
        text += '|';
        for (const Drill& record : *Analysis().DrillDowns) {
            EXPECT_EQ(record.ChosenCategory, -1) << record.Name;
            text += ' ' + record.Name + std::to_string(record.Order);
        }
        return text;
    }
};
ON_EVERY_ROAD(DrillMoves);

TEST_P(DrillMoves, PutTheNewestStepFirst) {
    struct Case {
        const char* Variable;
        bool Down;
        const char* Order;
        const char *CurrentDown, *CurrentUp;  ///< behind it; empty: none
        int Cases;
    };
    // clang-format off
    const Case cases[] = {
        {"X", true,  "X0 | Y0 Z1 W2",  "Y", "",  2},
        {"Y", true,  "Y0 X1 | Z0 W1",  "Z", "",  1},
        {"Z", true,  "Z0 Y1 X2 | W0",  "W", "",  1},
        {"Y", false, "Z0 X1 | Y0 W1",  "W", "Z", 2},  // the current variable stays as it was
        {"W", true,  "W0 Z1 X2 | Y0",  "Y", "Z", 2},
        {"Y", true,  "Y0 W1 Z2 X3 |",  "",  "Z", 1},
        {"X", false, "Y0 W1 Z2 | X0",  "",  "Y", 1},
        {"Z", false, "Y0 W1 | Z0 X1",  "",  "Y", 1},
        {"W", false, "Y0 | W0 Z1 X2",  "",  "Y", 1},
        {"Y", false, "| Y0 W1 Z2 X3",  "",  "",  3},
    };
    // clang-format on
    Choose({"X", "Y", "Z", "W"});
    const auto number = [this](const std::string& name) { return name.empty() ? -1 : Number(name); };
    for (const Case& each : cases) {
        each.Down ? Down(each.Variable, "1") : Up(each.Variable);
        EXPECT_EQ(Order(), each.Order);
        EXPECT_EQ(Analysis().GetValidVar(), each.Cases) << each.Order;
        EXPECT_EQ(Analysis().GetCurrentDown(), number(each.CurrentDown)) << each.Order;
        EXPECT_EQ(Analysis().GetCurrentUp(), number(each.CurrentUp)) << each.Order;
    }
    EXPECT_EQ(Analysis().GetCurrentDrillUp(), 0);
    EXPECT_EQ(Analysis().GetCurrentDrillUpName(), "");
}

TEST_P(DrillMoves, TurnTheRowIntoTheCategory) {
    const double none = 0, tiny = Moved(0.0, 15), some = Moved(0.0, 16);
    struct Case {
        std::vector<double> Counts;
        int Row;
        int Category;
    };
    const Case cases[] = {
        {{5, none, 3}, 0, 0}, {{5, none, 3}, 1, 2}, {{5, none, 3}, 2, 3}, {{none, none, 3}, 0, 2}, {{}, 0, 0},
        {{none, none}, 0, 2}, {{5, tiny, 3}, 1, 2}, {{5, some, 3}, 1, 1}, {{3, none, none}, 1, 3},
    };
    for (const Case& each : cases) {
        Choose({"X"});
        std::set<Categories>& categories = Record("X").CategorySet;
        categories.clear();
        for (std::size_t i = 0; i < each.Counts.size(); ++i) {
            categories.insert({0, each.Counts[i], static_cast<double>(i), "", 0});
        }
        Analysis().SetCurrentDown(Number("X"));
        Analysis().SetSelected(each.Row);
        EXPECT_EQ(Analysis().MoveToDrillUps(), 1);
        EXPECT_EQ(Analysis().DrillUps->begin()->ChosenCategory, each.Category) << "row " << each.Row;
    }
}

TEST_P(DrillMoves, SelectStepsByTheirPlace) {
    Choose({"X", "Y"});
    Down("X", "1");
    Down("Y", "1");
    const std::pair<std::int16_t, std::int16_t> places[] = {{0, Number("Y")}, {1, Number("X")}, {2, -1}, {-1, -1}};
    for (const auto& [place, var] : places) {
        EXPECT_EQ(Analysis().SetCurrentUpItem(place), var) << place;
        EXPECT_EQ(Analysis().GetCurrentUp(), var) << place;
        EXPECT_EQ(Analysis().GetCurrentUpItem(), var == -1 ? -1 : place) << place;
    }
    Analysis().SetCurrentUp(Number("W"));
    EXPECT_EQ(Analysis().GetCurrentUpItem(), -1);
    EXPECT_EQ(Analysis().GetCurrentUp(), -1) << "the getter forgets a variable that isn't there";
}

}  // namespace drilltest
