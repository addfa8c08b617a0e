// What a step keeps, and where that must differ from what the row of its category showed.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class DrillFilter : public DrillTest {
  protected:
    /// Whether a step on the category (or, for `method` 3, [) 0 to 10 keeps a case.
    int Kept(std::int32_t method, double value, double missingCode = -9999) {
        Open({RawNumbers("x", {value}, missingCode), RawNumbers("y", {1})});
        Choose({}, {"x", "y"});
        Record("x").Method = method;
        Record("x").CategorySet = {{1, 1.0, 10.0, "", 0.0}};
        Analysis().SetCurrentDown(Number("x"));
        Take(0);
        const double values[] = {0.0, value, 1.0};
        EXPECT_EQ(Analysis().HasBeenDrilled(values), 1 - Analysis().GetValidVar());
        return Analysis().GetValidVar();
    }
};
ON_EVERY_ROAD(DrillFilter);

TEST_P(DrillFilter, TestsTheBoundsByTheMethod) {
    struct Case {
        double Value;
        int Equal, OpenClosed, ClosedOpen;
    };
    // clang-format off
    const Case cases[] = {
        // Value         0,4  1,2,5  3
        {-1,             0,   0,     0},
        {0,              0,   0,     1},
        {Moved(0, 1),    0,   1,     1},
        {Moved(10, -1),  0,   1,     1},
        {10,             1,   1,     0},
        {Moved(10, 1),   0,   0,     0},
        {NA,             0,   1,     1},   // NaN lies outside of no interval
        {Infinity,       0,   0,     0},
    };
    // clang-format on
    for (const Case& each : cases) {
        const int kept[] = {each.Equal, each.OpenClosed, each.OpenClosed, each.ClosedOpen, each.Equal, each.OpenClosed};
        for (std::int32_t method = DistinctValues; method <= UserIntervals; ++method) {
            EXPECT_EQ(Kept(method, each.Value), kept[method]) << "method " << method << " value " << each.Value;
        }
    }
}

TEST_P(DrillFilter, LetsAMissingCodeInsideTheChosenIntervalPass) {
    EXPECT_EQ(Kept(NeatIntervals, 5, 5), 1);
    EXPECT_EQ(Kept(NeatIntervals, 15, 15), 0);
}

TEST_P(DrillFilter, EndsAtAStepOfUnknownMethod) {
    Open({Numbers("x", {1, 2, 2}), Numbers("y", {1, 1, 2}), Numbers("z", {1, 1, 1})});
    Choose({"x", "y", "z"});
    Down("x", "1");
    Down("z", "1");
    RecordIn(*Analysis().DrillUps, "z").Method = 6;
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(State(), "z x | 1 open, 3 cases");
    RecordIn(*Analysis().DrillUps, "z").ChosenCategory = 1;  // Missing, whatever the method
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(State(), "z x | 1 open, 0 cases");
}

TEST_P(DrillFilter, KeepsNothingWhereTheChosenCategoryIsNotThere) {
    for (const int row : {-1, 4, 2147483647}) {
        Open({Numbers("x", {1, 2, 3, NA}), Numbers("y", {1, 1, 1, 1})});
        Choose({"x", "y"});
        Focus(Number("x"));
        Take(row);
        EXPECT_EQ(State(), "x | 1 open, 0 cases") << row;
        const double values[] = {0.0, 1.0, 1.0};
        EXPECT_EQ(Analysis().HasBeenDrilled(values), 1) << row;
    }
}

TEST_P(DrillFilter, DiffersFromTheRowWhereItMust) {
    struct Case {
        const char* Why;
        std::int32_t Method;
        std::vector<double> X, Y;
        const char* Shown;
        const char* Category;
        int Kept;
    };
    // clang-format off
    const Case cases[] = {
        {"below the first interval", StepIntervals, {0, 4, 8}, {1, 1, 1}, "x: n=3 mean=4 [2<=x<6:2 6<=x<10:1] missing 0", "2<=x<6", 1},
        {"lowest under one boundary", UserIntervals, {0, 4, 8}, {1, 1, 1}, "x: n=3 mean=4 [x<=5:2 5<x:1] missing 0", "x<=5", 1},
        {"nearly equal", DistinctValues, {1, Moved(1, 10), 1}, {1, 1, 1}, "x: n=3 mean=1 [1:3] missing 0", "1", 2},
        {"single value in steps", StepIntervals, {5, 5}, {1, 1}, "x: n=2 mean=5 [5:0] missing 0", "Missing", 0},
        {"deleted casewise", DistinctValues, {1, 1, 2}, {1, NA, 1}, "x: n=2 mean=1.5 [1:1 2:1] missing 1", "1", 2},
    };
    // clang-format on
    for (const Case& each : cases) {
        Open({Numbers("x", each.X), Numbers("y", each.Y)});
        Analysis().SetMD(1);
        Choose({}, {"x", "y"});
        Categorize("x", [&](Drill& record) {
            record.Method = each.Method;
            record.StepSize = 4;
            record.StepStart = 2;
            record.StartAtMin = 0;
            record.UserInterv[0] = 5;
            record.NU = 1;
        });
        EXPECT_EQ(Open("x"), each.Shown) << each.Why;
        Down("x", each.Category);
        EXPECT_EQ(Analysis().GetValidVar(), each.Kept) << each.Why;
    }
}

}  // namespace drilltest
