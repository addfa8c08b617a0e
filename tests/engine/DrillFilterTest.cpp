// What a step keeps, and that it is what the row of the category showed.

#include "tests/engine/DrillBench.h"
#include "tests/engine/Exploration.h"

namespace drilltest {

class DrillFilter : public DrillTest {
  protected:
    /// Cases that a step on a variable with the category (or, for `method` 3, [) 0 to 10 keeps.
    int Kept(std::int32_t method, double value, double missingCode = -9999) {
        Open({RawNumbers("x", {value}, missingCode), RawNumbers("y", {1})});
        Choose({}, {"x", "y"});
        Drill& record = Record("x");
        record.Method = method;
        record.CategorySet = {{1, 1.0, 10.0, "", 0.0}};
        Analysis().SetCurrentDown(Number("x"));
        Analysis().SetSelected(0);
        Analysis().MoveToDrillUps();
        const double values[] = {0.0, value, 1.0};
        Analysis().ReadAfterDrill(0);
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
        {5,              0,   1,     1},
        {Moved(10, -1),  0,   1,     1},
        {10,             1,   1,     0},
        {Moved(10, 1),   0,   0,     0},
        {NA,             0,   1,     1},   // NaN lies outside of no interval
        {Infinity,       0,   0,     0},
    };
    // clang-format on
    for (const Case& each : cases) {
        for (const auto& [method, kept] : {std::pair{0, each.Equal},
                                           {4, each.Equal},
                                           {1, each.OpenClosed},
                                           {2, each.OpenClosed},
                                           {5, each.OpenClosed},
                                           {3, each.ClosedOpen}}) {
            EXPECT_EQ(Kept(method, each.Value), kept) << "method " << method << " value " << each.Value;
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
    EXPECT_EQ(State(), "z x | 1 open, 1 cases");
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

TEST_P(DrillFilter, KeepsTheMissingCasesOfAStepOnMissing) {
    Open({RawNumbers("x", {1, 5, Moved(5, 15), Moved(5, 16), 5}, 5), Numbers("y", {1, 1, 2, 3, 3})});
    Choose({"x", "y"});
    EXPECT_EQ(Analysis().NoMissingDrill(), 1);
    Down("x", "Missing");
    EXPECT_EQ(Open("y"), "y: n=3 mean=2 [1:1 2:1 3:1] missing 0");
    EXPECT_EQ(Analysis().NoMissingDrill(), 0);
    Down("y", "2");
    EXPECT_EQ(State(), "y x | 0 open, 1 cases");
}

// Where the row of a category and the step on it differ, and must.

TEST_P(DrillFilter, ExcludesValuesBelowTheFirstIntervalThatCountsThem) {
    Open({Numbers("x", {0, 4, 8}), Numbers("y", {1, 1, 1})});
    Choose({}, {"x", "y"});
    Categorize("x", [](Drill& record) {
        record.Method = StepIntervals;
        record.StepSize = 4;
        record.StartAtMin = 0;
        record.StepStart = 2;
    });
    EXPECT_EQ(Open("x"), "x: n=3 mean=4 [2<=x<6:2 6<=x<10:1] missing 0");
    Down("x", "2<=x<6");
    EXPECT_EQ(State(), "x | 1 open, 1 cases");
}

TEST_P(DrillFilter, ExcludesTheLowestValueUnderOneBoundary) {
    Open({Numbers("x", {0, 4, 8}), Numbers("y", {1, 1, 1})});
    Choose({}, {"x", "y"});
    Categorize("x", [](Drill& record) {
        record.Method = UserIntervals;
        record.NU = 1;
        record.UserInterv[0] = 5;
    });
    EXPECT_EQ(Open("x"), "x: n=3 mean=4 [x<=5:2 5<x:1] missing 0");
    Down("x", "x<=5");
    EXPECT_EQ(State(), "x | 1 open, 1 cases");
}

TEST_P(DrillFilter, ExcludesNearlyEqualValuesThatTheCategoryCounts) {
    Open({Numbers("x", {1, Moved(1, 10), 1, 2}), Numbers("y", {1, 1, 1, 1})});
    Choose({"x", "y"});
    EXPECT_EQ(Open("x"), "x: n=4 mean=1.25 [1:3 2:1] missing 0");
    Down("x", "1");
    EXPECT_EQ(State(), "x | 1 open, 2 cases");
}

TEST_P(DrillFilter, AdmitsNothingToASingleValueOfTheStepMethod) {
    Open({Numbers("x", {5, 5}), Numbers("y", {1, 1})});
    Choose({}, {"x", "y"});
    Categorize("x", [](Drill& record) { record.Method = StepIntervals; });
    EXPECT_EQ(Open("x"), "x: n=2 mean=5 [5:0] missing 0");
    Record("x").Isset = 1;
    Analysis().SetCurrentDown(Number("x"));
    Editable(*Record("x").CategorySet.begin()).Count = 2;
    Take(0);
    EXPECT_EQ(State(), "x | 1 open, 0 cases");
}

TEST_P(DrillFilter, KeepsCasesDeletedCasewiseThatTheCategoryDoesNotCount) {
    Open({Numbers("x", {1, 1, 2}), Numbers("y", {1, NA, 1})});
    Choose({"x", "y"});
    Analysis().SetMD(1);
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(Open("x"), "x: n=2 mean=1.5 [1:1 2:1] missing 1");
    Down("x", "1");
    EXPECT_EQ(State(), "x | 1 open, 2 cases");
}

namespace {

/// Methods that cut as the Categorization tab does by default, so that the lowest value lies inside.
Drill TabMethod(std::int32_t method) {
    Drill record(0, 0, 0, "");
    record.Method = method;
    record.ExactCount = 4;
    record.NeatCount = 5;
    record.StepSize = 1.75;
    record.NU = 3;
    record.UserInterv = {0.5, 2, 3.25};
    return record;
}

/// Drills on every row of a record's list and back, and compares the weight of what remains with what the row showed.
void CompareRows(DrillBench& bench, std::int16_t var) {
    CDrillDown& analysis = bench.Analysis();
    bench.Recount();
    const Drill shown = *analysis.LookFor(var, analysis.DrillDowns);
    std::vector<double> counts;
    for (const Categories& category : shown.CategorySet) {
        if (IsNonZero(category.Count)) {
            counts.push_back(category.Count);
        }
    }
    counts.push_back(shown.MissingWeight);
    for (std::size_t row = 0; row < counts.size(); ++row) {
        bench.Focus(var);
        bench.Take(static_cast<int>(row));
        EXPECT_EQ(analysis.Reviews->begin()->ValidWeight, counts[row])
            << "method " << shown.Method << " row " << row << " of variable " << var;
        bench.UpPlace(0);
    }
}

}  // namespace

TEST_P(DrillFilter, KeepsWhatTheRowOfEveryCategoryShows) {
    for (std::uint64_t seed = 1; seed <= 60 && !HasFailure(); ++seed) {
        Random random(seed);
        quillara::DataTable table = RandomTable(random, TableStyle::PlainNumbers, 1 + static_cast<int>(seed % 40));
        const auto variables = static_cast<std::int16_t>(table.Variables.size() - 1);
        table.Variables.push_back(RawNumbers("all", std::vector<double>(static_cast<std::size_t>(table.Cases), 1.0)));
        quillara::VariableLists lists;
        for (std::int16_t var = 1; var <= variables; ++var) {
            lists.Second.push_back(var);
        }
        Open(table);
        Weigh("weight");
        Analysis().SetWM(1);
        ChooseLists(lists);
        Review({"all"});
        for (const std::int16_t var : lists.Second) {
            for (std::int32_t method = DistinctValues; method <= UserIntervals; ++method) {
                drilltest::Categorize(Editable(*Analysis().LookFor(var, Analysis().DrillDowns)), TabMethod(method));
                Analysis().DataChanged = 1;
                CompareRows(*this, var);
            }
        }
    }
}

}  // namespace drilltest
