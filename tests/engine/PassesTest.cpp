// What each pass makes of the cases, in plain numbers. The random tables compare all fields; these are the anchors.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class Passes : public DrillTest {
  protected:
    std::string Both(const std::string& first, const std::string& second) const {
        return Open(first) + ", " + Open(second);
    }
};
ON_EVERY_ROAD(Passes);

TEST_P(Passes, WithoutCasesFindNothing) {
    Open({Numbers("x", {}), Numbers("y", {})});
    Choose({"x"}, {"y"});
    Recount();
    EXPECT_EQ(Both("x", "y"), "x: n=0 mean=0 [] missing 0, y: n=0 mean=0 [] missing 0");
    EXPECT_EQ(Record("x").Min, 1.7e+308);
    EXPECT_EQ(Record("x").Max, -1.7e+308);
    EXPECT_EQ(State(), "| 2 open, 0 cases");
}

TEST_P(Passes, ScanGivesStatisticsAndDistinctValues) {
    Open({Numbers("x", {2, 1, NA, 2, 3}), Numbers("y", {1, 2, 3, 4, NA})});
    Choose({"x"}, {"y"});
    EXPECT_EQ(Both("x", "y"),
              "x: n=4 mean=2 [1:1 2:2 3:1] missing 1, y: n=4 mean=2.5 "
              "[0.5<x<=1:0 1<x<=1.5:0 1.5<x<=2:0 2<x<=2.5:0 2.5<x<=3:0 3<x<=3.5:0 "
              "3.5<x<=4:0] missing 1");
    EXPECT_EQ(Record("y").SumSquares, 5);
    EXPECT_EQ(Record("x").Isset, 1);
    EXPECT_EQ(Record("y").Isset, 0);
    EXPECT_EQ(State(), "| 2 open, 5 cases");
}

TEST_P(Passes, WeighCasesWholeOrAsStored) {
    Open({Numbers("x", {1, 1, 2, NA, 2, 1, 2}), Numbers("w", {0.4, 0.5, 2.5, 1, -1, -0.4, NA})});
    Choose({"x"});
    EXPECT_EQ(Open("x"), "x: n=6 mean=1.5 [1:3 2:3] missing 1");
    Analysis().SetWM(1);
    Choose({"x"});
    EXPECT_EQ(Open("x"), "x: n=6 mean=1.5 [1:3 2:3] missing 1") << "no weight is in force";
    Weigh("w");
    Choose({"x"});
    EXPECT_EQ(Open("x"), "x: n=3 w=3.4 mean=1.73529 [1:0.9 2:2.5] missing 1");
    Analysis().SetWM(2);
    Choose({"x"});
    EXPECT_EQ(Open("x"), "x: n=2 w=4 mean=1.75 [1:1 2:3] missing 1") << "only a flag of 1 is set";
    EXPECT_EQ(State(), "| 1 open, 3 cases");
}

TEST_P(Passes, DropCasesWithoutWeightAltogether) {
    Open({Numbers("x", {1, NA}), Numbers("y", {1, 2}), Numbers("w", {0, 0})});
    Weigh("w");
    EXPECT_EQ(Choose({"x"}, {"y"}), 1);
    EXPECT_EQ(Both("x", "y"), "x: n=0 mean=0 [] missing 0, y: n=0 mean=0 [] missing 0");
    EXPECT_EQ(State(), "| 2 open, 0 cases");
}

TEST_P(Passes, CountNothingOutsideTheSelection) {
    Open({Numbers("x", {1, 2, NA, 2})});
    Host().SetSelection({CaseResult::Use, CaseResult::Skip, CaseResult::Skip, CaseResult::Use});
    Choose({"x"});
    EXPECT_EQ(Open("x"), "x: n=2 mean=1.5 [1:1 2:1] missing 0");
}

TEST_P(Passes, TakeValuesNearTheMissingCodeAsMissing) {
    Open({RawNumbers("x", {5, Moved(5, 15), Moved(5, 16), NA, 7}, 5)});
    Choose({"x"});
    EXPECT_EQ(Open("x"), "x: n=3 mean=nan [5:1 7:1 --:1] missing 2");
}

TEST_P(Passes, DeleteCasewiseForAllVariablesOfAList) {
    Open({Numbers("a", {1, NA, 3}), Numbers("b", {1, 2, NA})});
    Choose({"a", "b"});
    EXPECT_EQ(Both("a", "b"), "a: n=2 mean=2 [1:1 3:1] missing 1, b: n=2 mean=1.5 [1:1 2:1] missing 1");
    EXPECT_EQ(State(), "| 2 open, 3 cases");
    Analysis().SetMD(1);
    Choose({"a", "b"});
    EXPECT_EQ(Both("a", "b"), "a: n=1 mean=1 [1:1] missing 2, b: n=1 mean=1 [1:1] missing 2");
    EXPECT_EQ(State(), "| 2 open, 1 cases");
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(State(), "| 2 open, 3 cases") << "counts the cases that are deleted casewise too";
    Down("a", "1");
    EXPECT_EQ(Open("b"), "b: n=1 mean=1 [1:1] missing 0");
    Choose({"b", "a"});
    Down("a", "Missing");
    EXPECT_EQ(Open("b"), "b: n=0 mean=0 [] missing 1") << "a variable that was drilled on still deletes";
}

TEST_P(Passes, CountCasesDeletedForReviewsOnlyInTheScan) {
    Open({Numbers("a", {1, NA, 3}), Numbers("b", {1, 2, NA})});
    Choose({"a"});
    Analysis().SetRVMD(1);
    Review({"a", "b"});
    EXPECT_EQ(Reviewed("b"), "b: n=1 mean=1 [1:1] missing 2");
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(Reviewed("b"), "b: n=1 mean=1 [1:1] missing 0");
    EXPECT_EQ(Open("a"), "a: n=2 mean=2 [1:1 3:1] missing 1");
}

TEST_P(Passes, TurnAVariableWithTooManyValuesToNeatIntervals) {
    std::vector<double> values(2048);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<double>(i);
    }
    Open({Numbers("x", values)});
    Choose({"x"});
    EXPECT_EQ(Record("x").CategorySet.size(), 2048U) << "no case follows the one that brought the last value";
    EXPECT_EQ(Record("x").Method, DistinctValues);
    Recount();
    EXPECT_EQ(Record("x").CategorySet.size(), 0U) << "the first value meets a full set";
    EXPECT_EQ(Record("x").Method, NeatIntervals);
    EXPECT_EQ(Record("x").Isset, 1);
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(Record("x").CategorySet.size(), 12U);
    values.push_back(0);
    Open({Numbers("x", values)});
    Choose({"x"});
    EXPECT_EQ(Record("x").Method, NeatIntervals);
    EXPECT_EQ(Record("x").Isset, 0);
    EXPECT_EQ(Record("x").CategorySet.size(), 12U);
}

TEST_P(Passes, AdmitOnlyWholeValuesToIntegerCategories) {
    Open({Numbers("x", {1, 1.5, 2, 2, Moved(2, 3)})});
    Choose({}, {"x"});
    Categorize("x", [](Drill& record) { record.Method = IntegerCategories; });
    EXPECT_EQ(Open("x"), "x: n=5 mean=1.7 [1:1 2:3] missing 0");
}

TEST_P(Passes, RecountFromZero) {
    Open({Numbers("x", {0, 4, 8})});
    Choose({}, {"x"});
    Review({}, {"x"});
    RecordIn(*Analysis().Reviews, "x").NeatCount = 2;
    Categorize("x", [](Drill& record) {
        record.Method = UserIntervals;
        record.NU = 1;
        record.UserInterv[0] = 4;
    });
    EXPECT_EQ(Open("x"), "x: n=3 mean=4 [x<=4:2 4<x:1] missing 0");
    EXPECT_EQ(Analysis().DataChanged, 0);
    Recount();
    EXPECT_EQ(Open("x"), "x: n=3 mean=4 [x<=4:2 4<x:1] missing 0");
    EXPECT_EQ(Reviewed("x"), "x: n=3 mean=4 [-10<x<=0:1 0<x<=10:2] missing 0");
    Analysis().FillNeatIntervals();
    EXPECT_EQ(Open("x"), "x: n=3 mean=4 [x<=4:4 4<x:2] missing 0") << "the interval counts go on from what is there";
}

TEST_P(Passes, RecountReviewValuesAsIntervals) {
    // Nearly equal values are one category, but a recount by intervals puts the larger one into the next.
    Open({Numbers("x", {1, Moved(1, 10), 2, NA})});
    Choose({"x"});
    Review({"x"});
    EXPECT_EQ(Reviewed("x"), "x: n=3 mean=1.33333 [1:2 2:1] missing 1");
    Recount();
    EXPECT_EQ(Reviewed("x"), "x: n=3 mean=1.33333 [1:1 2:2] missing 1");
    EXPECT_EQ(Open("x"), "x: n=3 mean=1.33333 [1:2 2:1] missing 1");
}

TEST_P(Passes, FillIntervalsWithAndWithoutTheSteps) {
    Open({Numbers("s", {1, 1, 2, 2}), Numbers("x", {0, 8, 8, NA}), Numbers("y", {1, NA, 1, 1})});
    Choose({"s"}, {"x", "y"});
    Record("x").NeatCount = 2;
    Analysis().SetNeatIntervals();
    EXPECT_EQ(Analysis().FillNeatIntervals(), 1);
    EXPECT_EQ(Open("x"), "x: n=3 mean=5.33333 [-10<x<=0:1 0<x<=10:2] missing 1");
    EXPECT_EQ(Record("x").Isset, 1);
    Analysis().SetNeatIntervals();
    EXPECT_EQ(Analysis().FillContinuousIntervals(), 1);
    EXPECT_EQ(Open("x"), "x: n=3 mean=5.33333 [-10<x<=0:1 0<x<=10:1] missing 1") << "no case with missing data";
    Analysis().SetMD(1);
    Analysis().SetNeatIntervals();
    Analysis().FillNeatIntervals();
    EXPECT_EQ(Open("x"), "x: n=3 mean=5.33333 [-10<x<=0:1 0<x<=10:1] missing 1");
    Down("s", "2");
    Record("x").Max = 20;
    Analysis().SetNeatIntervals();
    Analysis().FillContinuousIntervals();
    EXPECT_EQ(Open("x"), "x: n=1 mean=8 [0<x<=10:1 10<x<=20:0] missing 1") << "only what the step keeps";
}

TEST_P(Passes, LeaveNothingWhenNoCaseRemains) {
    Open({Numbers("s", {1, 2}), Numbers("x", {1, 2}), Numbers("y", {1, 2})});
    Choose({"s", "x"}, {"y"});
    Down("s", "Missing");
    EXPECT_EQ(State(), "s | 2 open, 0 cases");
    EXPECT_EQ(Both("x", "y"), "x: n=0 mean=0 [] missing 0, y: n=0 mean=0 [] missing 0");
    EXPECT_EQ(Record("y").Max, -1.7e+308);
}

TEST_P(Passes, CancelledLeaveWhatIsTold) {
    Open({Numbers("x", {1, 1, 2}), Numbers("y", {1, 2, 3})});
    Choose({"x"}, {"y"});
    Review({"x"});
    const std::string before = Open("x");
    CancelAt(3);
    EXPECT_EQ(Analysis().ReadBeforeDrill(0), 0);
    EXPECT_EQ(Open("x"), "x: n=3 mean=1.33333 [1:2 2:0] missing 0") << "the cases before the cancel are counted";
    EXPECT_EQ(Record("x").Isset, 0);
    CancelAt(3);
    EXPECT_EQ(Analysis().ReadAfterDrill(0), 0);
    EXPECT_EQ(Both("x", "y"), "x: n=3 mean=1.33333 [] missing 0, y: n=3 mean=2 [] missing 0");
    EXPECT_EQ(State(), "| 2 open, 2 cases");
    CancelAt(0);
    EXPECT_EQ(Analysis().ReadAfterDrill(0), 1);
    EXPECT_EQ(Open("x"), before);
    CancelAt(2);
    EXPECT_EQ(Review({"x"}), 1);
    EXPECT_EQ(RecordIn(*Analysis().Reviews, "x").CategorySet.size(), 1U);
    EXPECT_EQ(RecordIn(*Analysis().Reviews, "x").ValidCount, 0);
    CancelAt(2);
    EXPECT_EQ(Choose({"x"}, {"y"}), 1);
    EXPECT_EQ(State(), "| 0 open, 1 cases");
    EXPECT_EQ(Analysis().SelectedVariable(Number("x")), 1);
    EXPECT_EQ(TakeMessages(), Names{});
}

TEST_P(Passes, PutTheNameOfTheCaseIntoTheTextLine) {
    const std::string longName(220, 'n');
    struct Case {
        int CaseNumber;
        std::int16_t Width, Column;
        std::int16_t ColumnBehind;
        std::string Line;  ///< from ColumnBehind on, up to the first byte that isn't written
    };
    const Case cases[] = {
        {1, 0, 1, 1, ""},
        {1, 5, 1, 1, "ann  "},
        {1, 5, 10, 10, "ann  "},
        {1, 5, 217, 217, "ann "},
        {1, 5, 218, 1, "ann  "},
        {1, 5, 0, 1, "ann  "},
        {2, 4, 1, 1, "    "},
        {3, 220, 1, 1, std::string(220, ' ')},
        {1, 300, 200, 200, "ann" + std::string(18, ' ')},
    };
    quillara::DataTable table = TableOf({Numbers("x", {1, 2, 3})});
    table.CaseNames = {"ann", "", longName};
    Open(table);
    CDrillDown& analysis = Analysis();
    double values[2] = {};
    for (const Case& each : cases) {
        std::fill_n(analysis.CaseLine.Line, CaseLineWidth, '\0');
        analysis.CaseLine.Column = each.Column;
        analysis.Names.CaseNameWidth = each.Width;
        EXPECT_EQ(analysis.ReadCase(each.CaseNumber, values), 0);
        EXPECT_EQ(values[1], each.CaseNumber);
        EXPECT_EQ(analysis.CaseLine.Column, each.ColumnBehind);
        const std::string line(analysis.CaseLine.Line, CaseLineWidth);
        const std::string written = line.substr(static_cast<std::size_t>(each.ColumnBehind) - 1);
        EXPECT_EQ(written.substr(0, written.find('\0')), each.Line) << "width " << each.Width;
    }
    analysis.CaseLine.Column = 1;
    analysis.Names.CaseNameWidth = 8;
    analysis.ReadCase(3, values);
    std::string key(analysis.CaseLine.Line, 8);
    analysis.ExpandPossible8CharHash(key);
    EXPECT_EQ(key, longName) << "a name wider than its field is put in as its key";
}

TEST_P(Passes, BringTheRecordsUpToDateOnceAfterAChange) {
    Open({Numbers("x", {1, 2})});
    Choose({"x"});
    Host().SetSelection({CaseResult::Use, CaseResult::Skip});
    Analysis().BringUpToDate();
    EXPECT_EQ(Open("x"), "x: n=2 mean=1.5 [1:1 2:1] missing 0");
    Analysis().DataChanged = 1;
    Analysis().BringUpToDate();
    EXPECT_EQ(Open("x"), "x: n=1 mean=1 [1:1] missing 0");
    EXPECT_EQ(Analysis().DataChanged, 0);
}

}  // namespace drilltest
