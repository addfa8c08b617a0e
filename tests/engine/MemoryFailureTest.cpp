// Every operation that takes memory of the host, with that memory failing at each call in turn.

#include "tests/engine/DrillBench.h"
#include "tests/engine/Exploration.h"

namespace drilltest {

namespace {

struct MemoryCase {
    const char* Name;
    int (*Operate)(DrillBench&);
    bool Tells;  ///< a failure gives the message and 0; else it may be silent, or the dialog's result may stand
};

// clang-format off
const MemoryCase MemoryCases[] = {
    {"Init",                    [](DrillBench& b) { return b.Analysis().InitializeAfterFileChanged(); }, true},
    {"ResetMembers",            [](DrillBench& b) { return b.Analysis().ResetMembers(); }, true},
    {"SetDDNVariable",          [](DrillBench& b) { return b.Choose({"s", "t"}, {"x"}); }, false},
    {"SetRVVariable",           [](DrillBench& b) { return b.Review({"t"}, {"x"}); }, false},
    {"ReadDDNV",                [](DrillBench& b) { return b.Analysis().ReadDDNV(0); }, true},
    {"ReadRVV",                 [](DrillBench& b) { return b.Analysis().ReadRVV(0); }, true},
    {"ReadAfterDrill",          [](DrillBench& b) { return b.Analysis().ReadAfterDrill(0); }, true},
    {"ReadBeforeDrill",         [](DrillBench& b) { return b.Analysis().ReadBeforeDrill(0); }, true},
    {"FillNeatIntervals",       [](DrillBench& b) { return b.Analysis().FillNeatIntervals(); }, true},
    {"FillContinuousIntervals", [](DrillBench& b) { return b.Analysis().FillContinuousIntervals(); }, true},
    {"SetCategoriesName",       [](DrillBench& b) { return b.Analysis().SetCategoriesName(b.Number("t")); }, false},
    {"SetReviewCategoriesName", [](DrillBench& b) { return b.Analysis().SetReviewCategoriesName(b.Number("t")); }, false},
};
// clang-format on

/// A bench in the middle of an exploration.
void Explore(DrillBench& bench) {
    bench.Open({Numbers("s", {1, 1, 2, NA}), Numbers("t", {1, 2, 2, 1}), Numbers("x", {1, 5, 9, NA})});
    bench.Choose({"s", "t"}, {"x"});
    bench.Review({"t"}, {"x"});
    bench.Down("s", "1");
}

std::string Statistics(const DrillBench& bench) {
    std::string text;
    for (const CDrillDown::DrillSet* set : {bench.Analysis().DrillDowns, bench.Analysis().Reviews}) {
        for (const Drill& record : *set) {
            text += record.Name + ' ' + std::to_string(record.Mean) + ' ' + std::to_string(record.ValidCount) + ", ";
        }
    }
    return text;
}

std::string Everything(const DrillBench& bench) {
    std::string text = bench.State();
    for (const Drill& record : *bench.Analysis().DrillDowns) {
        text += ' ' + bench.Open(record.Name);
    }
    for (const Drill& record : *bench.Analysis().Reviews) {
        text += ' ' + bench.Reviewed(record.Name);
    }
    return text;
}

/// Lets the n-th call of an operation fail and repeats it; false when it takes fewer calls.
bool FailsAt(Road road, const MemoryCase& operation, int call) {
    SCOPED_TRACE(std::string(operation.Name) + ", call " + std::to_string(call));
    DrillBench undisturbed(road);
    Explore(undisturbed);
    const int success = operation.Operate(undisturbed);
    DrillBench bench(road);
    Explore(bench);
    const std::string before = Statistics(bench);
    const std::size_t live = bench.Host().LiveAllocations();
    bench.Host().FailAllocation(call);
    const int result = operation.Operate(bench);
    if (bench.Host().AllocationCalls() < call) {
        return false;
    }
    const Names messages = bench.TakeMessages();
    const bool arraysGone = bench.Analysis().Categorical == nullptr;
    EXPECT_EQ(bench.Host().LiveAllocations(), arraysGone ? 0 : live);
    EXPECT_TRUE(messages.empty() || messages == Names{NotEnoughMemory});
    if (operation.Tells) {
        // Categories whose names can't be made keep the old ones, and nothing is said.
        EXPECT_EQ(result, messages.empty() ? success : 0);
        if (!messages.empty() && !arraysGone) {
            EXPECT_EQ(Statistics(bench), before);
        }
    }
    bench.Host().FailAllocation(0);
    EXPECT_EQ(operation.Operate(bench), success);
    bench.Analysis().ReadAfterDrill(0);
    undisturbed.Analysis().ReadAfterDrill(0);
    EXPECT_EQ(Everything(bench), Everything(undisturbed));
    EXPECT_EQ(bench.Host().LiveAllocations(), live);
    return true;
}

}  // namespace

class MemoryFailure : public DrillTest {};
ON_EVERY_ROAD(MemoryFailure);

TEST_P(MemoryFailure, AtAnyCallIsToldAndLeavesNothingBehind) {
    for (const MemoryCase& operation : MemoryCases) {
        int call = 1;
        while (FailsAt(GetParam(), operation, call)) {
            ++call;
        }
        EXPECT_GT(call, 1) << operation.Name << " takes no memory";
    }
}

TEST_P(MemoryFailure, OfTheNamesOfVariablesIsSilentAndLeavesNoRecords) {
    for (const int call : {1, 2}) {
        Explore(*this);
        Host().FailAllocation(call);
        EXPECT_EQ(Choose({"s"}, {"x"}), 0);
        EXPECT_EQ(Analysis().GetDrillDownsSize() + Analysis().GetDrillUpsSize() + Analysis().GetDrillReviewsSize(), 0);
        EXPECT_EQ(Analysis().SelectedVariable(Number("x")), 1);
        EXPECT_EQ(TakeMessages(), Names{});
    }
    Explore(*this);
    Host().FailAllocation(3);  // behind the two lists of the 3D histograms
    EXPECT_EQ(Review({"t"}), 0);
    EXPECT_EQ(State(), "s | 2 open, 2 cases");
    EXPECT_EQ(Analysis().GetDrillReviewsSize(), 0);
    EXPECT_EQ(TakeMessages(), Names{});
}

TEST_P(MemoryFailure, OfTheScanLeavesTheDialogsResultAndEmptyRecords) {
    Explore(*this);
    Host().FailAllocation(3);
    EXPECT_EQ(Choose({"s"}, {"x"}), 1);
    EXPECT_EQ(Everything(*this), "| 2 open, 0 cases s: n=0 mean=0 [] missing 0 x: n=0 mean=0 [] missing 0");
    EXPECT_EQ(TakeMessages(), Names{NotEnoughMemory});
}

TEST_P(MemoryFailure, AtTheStartEndsTheSequence) {
    const quillara::DataTable table = TableOf({Numbers("x", {1})});
    CAnalysisDoc document(table);
    Names messages;
    document.Services.ShowMessage = [&](std::string_view text) { messages.emplace_back(text); };
    document.Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    for (int call = 1; call <= 7; ++call) {
        document.FailAllocation(call);
        EXPECT_FALSE(document.RunSequence());
        EXPECT_EQ(document.LiveAllocations(), 0U);
    }
    EXPECT_EQ(messages, Names(7, NotEnoughMemory));
    EXPECT_TRUE(document.RunSequence());
    EXPECT_EQ(document.LiveAllocations(), 7U);
}

TEST_P(MemoryFailure, AtASecondStartLeavesAnAnalysisWithoutVariables) {
    Open({Numbers("x", {1, 2})});
    Choose({"x"});
    Host().FailAllocation(1);
    EXPECT_FALSE(Host().RunSequence());
    EXPECT_EQ(Analysis().SelectedVariable(Number("x")), 0);
    EXPECT_EQ(Analysis().ReadBeforeDrill(0), 1);
    EXPECT_EQ(Analysis().GetDrillDownsSize(), 0);
}

}  // namespace drilltest
