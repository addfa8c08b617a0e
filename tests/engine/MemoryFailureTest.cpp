// Every operation that takes memory of the host, with that memory failing at each call in turn.

#include <string>

#include "tests/engine/DrillBench.h"

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

std::string Records(const DrillBench& bench) {
    std::string text;
    for (const Drill& record : *bench.Analysis().DrillDowns) {
        text += bench.Open(record.Name) + '\n';
    }
    for (const Drill& record : *bench.Analysis().Reviews) {
        text += bench.Reviewed(record.Name) + '\n';
    }
    return text;
}

std::string Statistics(const DrillBench& bench) {
    std::string text = Records(bench);
    for (std::size_t open = text.find('['); open != std::string::npos; open = text.find('[')) {
        const std::size_t close = text.rfind(']', text.find('\n', open));
        text.erase(open, close - open + 1);
    }
    return text;
}

/// Lets the n-th call of an operation fail and repeats it; false when it takes fewer calls.
bool FailsAt(Road road, const MemoryCase& operation, int call) {
    SCOPED_TRACE(std::string(operation.Name) + ", call " + std::to_string(call));
    DrillBench undisturbed(road), bench(road);
    Explore(undisturbed);
    Explore(bench);
    const int success = operation.Operate(undisturbed);
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
        EXPECT_EQ(Statistics(bench), messages.empty() || arraysGone ? Statistics(bench) : before);
    }
    bench.Host().FailAllocation(0);
    EXPECT_EQ(operation.Operate(bench), success);
    bench.Analysis().ReadAfterDrill(0);
    undisturbed.Analysis().ReadAfterDrill(0);
    EXPECT_EQ(bench.State() + Records(bench), undisturbed.State() + Records(undisturbed));
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

}  // namespace drilltest
