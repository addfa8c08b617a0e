// What each pass makes of the cases, in plain numbers. The random tables compare all fields; these are the anchors.

#include <numeric>

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
    EXPECT_EQ(Both("x", "y"), "x: n=0 mean=0 [] missing 0, y: n=0 mean=0 [] missing 0");
    EXPECT_EQ(Record("x").Min, 1.7e+308);
    EXPECT_EQ(Record("x").Max, -1.7e+308);
}

TEST_P(Passes, WeighCasesWholeOrAsStored) {
    struct Case {
        bool Weighted;
        std::int16_t WeightedMoments;
        const char* Shown;
        double SumSquares;
    };
    const Case cases[] = {
        {false, 1, "x: n=6 mean=1.5 [1:3 2:3] missing 1", 1.5},
        {true, 0, "x: n=2 w=4 mean=1.75 [1:1 2:3] missing 1", 0.75},
        {true, 1, "x: n=3 w=4 mean=1.625 [1:1.5 2:2.5] missing 1", 0.9375},
        {true, 2, "x: n=2 w=4 mean=1.75 [1:1 2:3] missing 1", 0.75},  // only a flag of 1 is set
    };
    for (const Case& each : cases) {
        Open({Numbers("x", {1, 1, 2, NA, 2, 1, 2}), Numbers("w", {0.25, 1.25, 2.5, 1, -1, -0.4, NA})});
        Host().SetWeight(each.Weighted ? std::optional<std::size_t>(1) : std::nullopt);
        Analysis().SetWM(each.WeightedMoments);
        Choose({"x"});
        EXPECT_EQ(Open("x"), each.Shown);
        EXPECT_EQ(Record("x").SumSquares, each.SumSquares);
    }
}

TEST_P(Passes, DeleteCasewiseForAllVariablesOfAList) {
    Open({Numbers("a", {1, NA, 3}), Numbers("b", {1, 2, NA})});
    Analysis().SetMD(1);
    Choose({"a", "b"});
    EXPECT_EQ(Both("a", "b"), "a: n=1 mean=1 [1:1] missing 2, b: n=1 mean=1 [1:1] missing 2");
    EXPECT_EQ(State(), "| 2 open, 1 cases");
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(State(), "| 2 open, 3 cases") << "counts the cases that are deleted casewise too";
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

TEST_P(Passes, GiveUpAFullSetWhateverValueComes) {
    std::vector<double> values(2048);
    std::iota(values.begin(), values.end(), 0.0);
    Open({Numbers("x", values)});
    Choose({"x"});
    EXPECT_EQ(Record("x").CategorySet.size(), 2048U);
    Recount();
    EXPECT_EQ(Open("x"), "x: n=2048 mean=1023.5 [] missing 0") << "the first value meets a full set";
    EXPECT_EQ(Record("x").Method, NeatIntervals);
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

TEST_P(Passes, FillRemainingIntervalsWithoutMissingDataWhateverTheOption) {
    Open({Numbers("x", {0, 8, 8, NA}), Numbers("y", {1, NA, 1, 1})});
    Choose({}, {"x", "y"});
    Record("x").NeatCount = 2;
    Analysis().SetNeatIntervals();
    Analysis().FillNeatIntervals();
    EXPECT_EQ(Open("x"), "x: n=3 mean=5.33333 [-10<x<=0:1 0<x<=10:2] missing 1");
    Analysis().FillContinuousIntervals();
    EXPECT_EQ(Open("x"), "x: n=3 mean=5.33333 [-10<x<=0:2 0<x<=10:3] missing 1") << "on top of what is there";
}

TEST_P(Passes, CancelledLeaveWhatIsTold) {
    Open({Numbers("x", {1, 1, 2}), Numbers("y", {1, 2, 3})});
    Choose({"x"}, {"y"});
    CancelAt(3);
    EXPECT_EQ(Analysis().ReadBeforeDrill(0), 0);
    EXPECT_EQ(Open("x"), "x: n=3 mean=1.33333 [1:2 2:0] missing 0") << "the cases before the cancel are counted";
    CancelAt(3);
    EXPECT_EQ(Analysis().ReadAfterDrill(0), 0);
    EXPECT_EQ(Both("x", "y"), "x: n=3 mean=1.33333 [] missing 0, y: n=3 mean=2 [] missing 0");
    CancelAt(2);
    EXPECT_EQ(Review({"x"}), 1);
    EXPECT_EQ(Reviewed("x"), "x: n=0 mean=0 [:1] missing 0") << "the records stay";
    CancelAt(2);
    EXPECT_EQ(Choose({"x"}, {"y"}), 1);
    EXPECT_EQ(State(), "| 0 open, 1 cases") << "the records go";
    EXPECT_EQ(Analysis().SelectedVariable(Number("x")), 1);
    EXPECT_EQ(TakeMessages(), Names{});
}

TEST_P(Passes, EndTheProgressBehindNamingAndBuildingAndBeforeACancelTakesTheRecords) {
    Open({Numbers("s", {1, 2}), Numbers("x", {0, 8})});
    Names seen;
    Host().Services.ProgressEnded = [&] {
        const bool both = Analysis().GetDrillDownsSize() == 2;
        seen.push_back(both ? Open("s") + std::to_string(Record("x").CategorySet.size()) : "gone");
    };
    constexpr char all[] = "s: n=2 mean=1.5 [1:1 2:1] missing 09";
    Choose({"s"}, {"x"});
    Analysis().ReadBeforeDrill(0);
    Analysis().ReadAfterDrill(0);
    CancelAt(2);
    Choose({"s"}, {"x"});
    EXPECT_EQ(seen, (Names{all, all, all, "s: n=0 mean=0 [:1] missing 00"}));
}

TEST_P(Passes, PutTheNameOfTheCaseIntoTheTextLine) {
    struct Case {
        int CaseNumber;
        std::int16_t Width, Column;
        std::int16_t ColumnBehind;
        std::string Line;  ///< from ColumnBehind on, up to the first byte that isn't written
    };
    const Case cases[] = {
        {1, 0, 1, 1, ""},
        {1, 5, 217, 217, "ann "},
        {1, 5, 218, 1, "ann  "},
        {1, 5, 0, 1, "ann  "},
        {3, 220, 1, 1, std::string(220, ' ')},
        {1, 300, 200, 200, "ann" + std::string(18, ' ')},
    };
    quillara::DataTable table = TableOf({Numbers("x", {1, 2, 3})});
    table.CaseNames = {"ann", "", std::string(220, 'n')};
    Open(table);
    CDrillDown& analysis = Analysis();
    double values[2] = {};
    for (const Case& each : cases) {
        std::fill_n(analysis.CaseLine.Line, CaseLineWidth, '\0');
        analysis.CaseLine.Column = each.Column;
        analysis.Names.CaseNameWidth = each.Width;
        EXPECT_EQ(analysis.ReadCase(each.CaseNumber, values), 0);
        EXPECT_EQ(analysis.CaseLine.Column, each.ColumnBehind);
        const std::string line(analysis.CaseLine.Line, CaseLineWidth);
        const std::string written = line.substr(static_cast<std::size_t>(each.ColumnBehind) - 1);
        EXPECT_EQ(written.substr(0, written.find('\0')), each.Line) << "width " << each.Width;
    }
}

}  // namespace drilltest
