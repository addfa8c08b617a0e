// One step down or up: which records move, and how the sets are numbered behind it.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class DrillMoves : public DrillTest {
  protected:
    void SetUp() override {
        Open({Numbers("X", {1, 1, 2}), Numbers("Y", {1, 2, 2}), Numbers("Z", {1, 1, 1}), Numbers("W", {1, 1, 1})});
    }

    /// "Z0 Y1 | X0": steps and open variables with their Order, checking what holds for all of them.
    std::string Order() const {
        std::string text;
        for (const Drill& step : *Analysis().DrillUps) {
            EXPECT_GE(step.ChosenCategory, 0) << step.Name;
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
    Choose({"X", "Y", "Z", "W"});
    EXPECT_EQ(Order(), "| X0 Y1 Z2 W3");
    Down("X", "1");
    EXPECT_EQ(Order(), "X0 | Y0 Z1 W2");
    EXPECT_EQ(Analysis().GetCurrentDown(), Number("Y"));
    Down("Y", "1");
    Down("Z", "1");
    EXPECT_EQ(Order(), "Z0 Y1 X2 | W0");
    EXPECT_EQ(State(), "Z Y X | 1 open, 1 cases");
    Up("Y");
    EXPECT_EQ(Order(), "Z0 X1 | Y0 W1");
    EXPECT_EQ(State(), "Z X | 2 open, 2 cases");
    EXPECT_EQ(Analysis().GetCurrentUp(), Number("Z"));
    EXPECT_EQ(Analysis().GetCurrentDown(), Number("W")) << "stays as it was";
    Up("X");
    Up("Z");
    EXPECT_EQ(Order(), "| Z0 X1 Y2 W3");
    EXPECT_EQ(Analysis().GetCurrentUp(), -1);
}

TEST_P(DrillMoves, LeaveNoCurrentVariableBehindTheLast) {
    Choose({"X"});
    Down("X", "2");
    EXPECT_EQ(Order(), "X0 |");
    EXPECT_EQ(Analysis().GetCurrentDown(), -1);
    EXPECT_EQ(Analysis().GetCurrentDrillDown(), -1);
    Up("X");
    EXPECT_EQ(Analysis().GetCurrentUp(), -1);
    EXPECT_EQ(Analysis().GetCurrentDrillUp(), 0);
    EXPECT_EQ(Analysis().GetCurrentDrillUpName(), "");
    EXPECT_EQ(Analysis().GetCurrentDown(), -1) << "until the list selects anew";
}

TEST_P(DrillMoves, TurnTheRowIntoTheCategory) {
    const double none = 0, tiny = Moved(0.0, 15), some = Moved(0.0, 16);
    struct Case {
        std::vector<double> Counts;
        int Row;
        int Category;
    };
    const Case cases[] = {
        {{5, none, 3}, 0, 0},    {{5, none, 3}, 1, 2}, {{5, none, 3}, 2, 3},
        {{none, none, 3}, 0, 2}, {{}, 0, 0},           {{none, none}, 0, 2},
        {{5, tiny, 3}, 1, 2},    {{5, some, 3}, 1, 1}, {{3, none, none}, 0, 0},
        {{3, none, none}, 1, 3},
    };
    for (const Case& each : cases) {
        Choose({"X"});
        Drill& record = Record("X");
        record.CategorySet.clear();
        for (std::size_t i = 0; i < each.Counts.size(); ++i) {
            const auto value = static_cast<double>(i);
            record.CategorySet.insert({0, each.Counts[i], value, "", value});
        }
        Analysis().SetCurrentDown(Number("X"));
        Analysis().SetSelected(each.Row);
        EXPECT_EQ(Analysis().MoveToDrillUps(), 1);
        const Drill& step = *Analysis().DrillUps->begin();
        EXPECT_EQ(step.ChosenCategory, each.Category) << "row " << each.Row;
        EXPECT_EQ(step.CategorySet.size(), each.Counts.size());
        Analysis().DrillUps->clear();
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
    EXPECT_EQ(Analysis().GetCurrentDrillUp(), 0);
    EXPECT_EQ(Analysis().GetCurrentUpItem(), -1);
    EXPECT_EQ(Analysis().GetCurrentUp(), -1) << "the getter forgets a variable that isn't there";
}

TEST_P(DrillMoves, KeepMethodAndParametersOfAStepThatIsUndone) {
    Choose({"Y"}, {"X"});
    Categorize("X", [](Drill& record) {
        record.Method = UserIntervals;
        record.NU = 2;
        record.UserInterv = {0.5, 1.5};
    });
    Down("Y", "2");
    Focus(Number("X"));
    EXPECT_EQ(Open("X"), "X: n=2 mean=1.5 [x<=0.5:0 0.5<x<=1.5:1 1.5<x:1] missing 0");
    Take(0);
    Up("Y");
    EXPECT_EQ(State(), "X | 1 open, 2 cases") << "the bounds of the later step stay";
    Up("X");
    Recount();
    EXPECT_EQ(Open("X"), "X: n=3 mean=1.33333 [x<=0.5:0 0.5<x<=1.5:2 1.5<x:1] missing 0");
}

TEST_P(DrillMoves, MarkCountsStaleOnTheWayDownOnly) {
    Choose({"X", "Y"}, {"Z"});
    Down("X", "1");
    EXPECT_EQ(Record("Y").Isset, 0);
    Up("X");
    EXPECT_EQ(Record("Y").Isset, 1);
    EXPECT_EQ(Record("Z").Isset, 0);
}

}  // namespace drilltest
