// What results do where the host refuses memory, or counts otherwise than before.

#include "results/texts/ResultSubjects.h"
#include "tests/results/RecordedCalls.h"
#include "tests/results/ResultsBench.h"

namespace drilltest {

class HostFailures : public ResultsBench {
  protected:
    /// What an operation shows while the n-th call for memory fails.
    std::string ShownWithout(int call, int (*operate)(CDrillDown&)) {
        Host().FailAllocation(call);
        operate(Analysis());
        Calls = Host().AllocationCalls();
        Host().FailAllocation(0);
        return TakeShown();
    }

    int Calls = 0;  ///< for memory, of the last operation
};

/// Each result, with each allocation failing in turn: nothing kept, no message, and whole again with the next call.
TEST_F(HostFailures, MissingMemoryLeavesNothingBehind) {
    const struct {
        int (*Operate)(CDrillDown&);
        std::string Results;  ///< with the first, second, ... call for memory failing
        bool ShowsLess;  ///< each failure leaves something out
    } cases[] = {
        // clang-format off
        {[](CDrillDown& a) { return int{a.DDNSummary(nullptr)}; },     "001111111",        true},
        {[](CDrillDown& a) { return int{a.DDNDescriptive(nullptr)}; }, "1111111",          true},
        {[](CDrillDown& a) { return int{a.RVSummary(nullptr)}; },      "1111111",          true},
        {[](CDrillDown& a) { return int{a.DDNFrequency(nullptr)}; },   "0000000",          true},
        {[](CDrillDown& a) { return int{a.RVFrequency(nullptr)}; },    "1000000000000000", true},  // no descriptions
        // A chart whose buffers are there is shown, with no labels if need be.
        {[](CDrillDown& a) { return int{a.DDNHistograms(nullptr)}; },  "00001111",         false},
        {[](CDrillDown& a) { return a.DDNPiecharts(0, nullptr); },     "0000",             true},
        {[](CDrillDown& a) { return a.DDNStackedplots(0, nullptr); },  "0000011",         false},
        {[](CDrillDown& a) { return int{a.RVBoxWhiker(nullptr)}; },    "0",                true},
        {[](CDrillDown& a) { return int{a.RVScatterPlot(nullptr)}; },  "0",                true},
        // clang-format on
    };
    quillara::Variable x = Numbers("x", {1, 2, NA});
    x.Labels[1] = {"one", "The first of the values"};
    Open({x, Numbers("y", {1.5, 2, 3})});
    Choose({"x"}, {"y"});
    Review({"x"}, {"y"});
    Down("x", "one");
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        each.Operate(Analysis());  // brings the counts up to date
        TakeShown();
        Host().FailAllocation(0);
        each.Operate(Analysis());
        const std::string whole = TakeShown();
        const std::size_t live = Host().LiveAllocations();
        const int calls = Host().AllocationCalls();
        std::string results;
        for (int call = 1; call <= calls; ++call) {
            Host().FailAllocation(call);
            results += std::to_string(each.Operate(Analysis()));
            const std::string shown = TakeShown();
            EXPECT_TRUE(!each.ShowsLess || shown != whole) << "call " << call;
            EXPECT_EQ(Host().LiveAllocations(), live) << "call " << call;
            Host().FailAllocation(0);
            each.Operate(Analysis());
            EXPECT_EQ(TakeShown(), whole) << "call " << call;
        }
        EXPECT_EQ(results, each.Results);
    }
    EXPECT_TRUE(TakeMessages().empty());
}

/// A result whose pass has no memory, or no names, is of one piece: what the records hold. The next one reads again.
TEST_F(HostFailures, APassWithoutMemoryIsMadeGoodByTheNextResultOnly) {
    int (*const operations[])(CDrillDown&) = {
        [](CDrillDown& a) { return int{a.DDNDescriptive(nullptr)}; },
        [](CDrillDown& a) { return int{a.DDNFrequency(nullptr)}; },
        [](CDrillDown& a) { return int{a.RVFrequency(nullptr)}; },
        [](CDrillDown& a) { return int{a.RVHistograms(nullptr)}; },
        [](CDrillDown& a) { return a.RVPiecharts(0, nullptr); },
        [](CDrillDown& a) { return a.RVStackedplots(0, nullptr); },
    };
    Open({Numbers("x", {1, 1, 2, NA}), Numbers("y", {1.5, 2, 3, 4}), Numbers("z", {1, 2, 3, NA})});
    Choose({"x"}, {"y"});
    Review({"x", "z"}, {"y"});
    for (const auto& operate : operations) {
        SCOPED_TRACE(&operate - operations);
        int silent = 0;
        Analysis().DataChanged = 1;
        const std::string whole = ShownWithout(0, operate);
        const int calls = Calls;
        for (int call = 1; call <= calls && !HasFailure(); ++call) {
            Analysis().DataChanged = 1;
            const std::string shown = ShownWithout(call, operate);
            EXPECT_EQ(Analysis().DataChanged, 0);
            const std::size_t messages = TakeMessages().size();
            if (std::exchange(Analysis().ReadFailed, false)) {
                EXPECT_EQ(ShownWithout(0, operate), shown) << "call " << call;
                Analysis().ReadFailed = true;
                silent += messages == 0 ? 1 : 0;
            }
            EXPECT_EQ(ShownWithout(0, operate), whole) << "call " << call;
            EXPECT_FALSE(Analysis().ReadFailed);
        }
        EXPECT_GT(silent, 0) << "names alone";
    }
}

TEST_F(HostFailures, ARecountLeavesAStackedColumnItsMissingWeightFromBefore) {
    Open({Numbers("x", {1, 2, 3}), Numbers("y", {1, 2, 3})});
    Choose({}, {"x", "y"});
    Analysis().ReadAfterDrill(0);  // leaves the counts of intervals stale
    Host().Services.ProgressStarted = [this](auto, auto) {
        for (const char* name : {"x", "y"}) {
            Record(name).MissingWeight = Record(name).ValidWeight = 7;
        }
    };
    Record("x").MissingWeight = 1;
    Record("y").Isset = 1;
    Record("x").CategorySet = {{1, 3, 9, "all", 0}};
    Record("y").CategorySet.clear();
    TakeCalls();
    EXPECT_EQ(Analysis().DDNStackedplots(0, nullptr), 1);
    EXPECT_EQ(TakeCalls().find("Chart 2 0 3 [1 2 100 100] [1 2 87.5 50] [1 0 50 0]"), 0U)
        << "1 of 1 + 7; y has no more categories";
}

TEST_F(HostFailures, NamesInSubjectsAreNeverKeys) {  // the host expands those that it is given
    Open({Numbers("x", {1})});
    Drill record(1, CategoricalVariable, 0, "x");
    record.CategorySet = {Categories{1, 0, 1, LongTextKey("A name that travels as its key"), 0}};
    const ResultSubject subject = SubjectOf(Analysis(), ResultSide::Review, record, false);
    EXPECT_EQ(subject.Variables.at(0).Categories, Names{"A name that travels as its key"});
}

}  // namespace drilltest
