// What passes come to where the host's quick services answer otherwise than they should.

#include <dlfcn.h>

#include <algorithm>

#include "engine/CountMemory.h"
#include "host/CaseBlocks.h"
#include "tests/engine/DrillBench.h"
#include "workbench/hosting/AnalysisState.h"

namespace drilltest {

namespace {

enum class Slip : std::uint8_t {
    None,
    // whole columns
    NoEntries,
    NoValues,
    NoWeightValues,
    MoreBegunThanAsked,
    FewerBetweenPollsEachTime,
    NoSecondColumn,
    // threads and conditions
    NegativeThreads,
    PartsLeftOut,
    NoRowsOfSome,
    // blocks
    MoreThanAsked,
    OwnArray,
    NegativeCount,
    NoColumn,
};

class ErringHost : public QuickHost {
  public:
    ErringHost(quillara::AnalysisDocument& document, Slip slip)
        : QuickHost(document, {true, QuickServices::Answer::Rows, 4, 64, true}), TheSlip(slip) {}

    bool FindColumn(std::int16_t variable, TableColumn& column) override {
        const bool found = QuickHost::FindColumn(variable, column);
        ++ColumnsAsked;
        column.Entries = TheSlip == Slip::NoEntries ? nullptr : column.Entries;
        column.Values = TheSlip == Slip::NoValues ? nullptr : column.Values;
        return found && !(TheSlip == Slip::NoSecondColumn && variable == 2);
    }
    bool FindWeights(TableColumn& column) override {
        const bool found = QuickHost::FindWeights(column);
        column.ValueCount = TheSlip == Slip::NoWeightValues ? 0 : column.ValueCount;
        return found;
    }
    std::int32_t BeginCases(std::int32_t first, std::int32_t count) override {
        return QuickHost::BeginCases(first, count) + (TheSlip == Slip::MoreBegunThanAsked ? 1000 : 0);
    }
    std::int32_t CasesBetweenPolls() const override {
        return TheSlip == Slip::FewerBetweenPollsEachTime ? Between-- : QuickHost::CasesBetweenPolls();
    }
    bool FindCases(std::span<const CaseCondition> conditions, CaseSubset& cases) override {
        const bool found = QuickHost::FindCases(conditions, cases);
        cases.Rows = TheSlip == Slip::NoRowsOfSome ? nullptr : cases.Rows;
        return found;
    }
    std::int32_t Threads() const override { return TheSlip == Slip::NegativeThreads ? -1 : QuickHost::Threads(); }
    void Run(std::int32_t parts, Part part, void* work) override {
        QuickHost::Run(TheSlip == Slip::PartsLeftOut ? parts / 2 : parts, part, work);
    }

    Slip TheSlip;
    int ColumnsAsked = 0;

  private:
    mutable std::int32_t Between = 64;
};

class ErringBlocks : public CaseBlocks {
  public:
    ErringBlocks(CaseBlocks& host, Slip slip) : Host(host), TheSlip(slip) { Offered = this; }
    ~ErringBlocks() override { Offered = nullptr; }

    void ReadBlock(std::int32_t first, std::int32_t count, std::span<const std::int16_t> variables,
                   CaseBlock& block) override {
        Host.ReadBlock(first, count, variables, block);
        if (TheSlip == Slip::OwnArray) {
            Own.assign(block.Columns.begin(), block.Columns.end());
            std::ranges::fill(block.Columns, nullptr);
            block.Columns = Own;
        } else if (TheSlip == Slip::NoColumn) {
            block.Columns[0] = nullptr;
        }
        block.Count = TheSlip == Slip::MoreThanAsked ? 5000 : TheSlip == Slip::NegativeCount ? -3 : block.Count;
    }

    static inline CaseBlocks* Offered = nullptr;  ///< in place of the host's

  private:
    CaseBlocks& Host;
    Slip TheSlip;
    std::vector<const double*> Own;
};

struct WrongAnswers : testing::Test, DrillBench {
    WrongAnswers() : DrillBench(Road::Columns) {}

    void SetUp() override {
        std::vector<double> a, b, w;
        for (int i = 0; i < 300; ++i) {
            a.push_back(i % 7 == 3 ? NA : i % 4);
            b.push_back(i % 11 == 5 ? NA : i % 9 + 0.5);
            w.push_back(1 + i % 2);
        }
        Open({Numbers("a", a), Numbers("b", b), Numbers("c", b), Numbers("w", w)});
        Weigh("w");
        Analysis().SetMD(1);
        Analysis().SetRVMD(1);
    }
    /// The records behind a step, and messages.
    std::string Explored() {
        Choose({"a", "c"}, {"b"});
        Review({"a"}, {"c"});
        Down("a", "2");
        Recount();
        std::string text = State();
        for (const CDrillDown::DrillSet* set : {Analysis().DrillDowns, Analysis().Reviews}) {
            for (const Drill& record : *set) {
                text += "; " + TextOf(record);
            }
        }
        return text + testing::PrintToString(TakeMessages());
    }
};

}  // namespace

TEST_F(WrongAnswers, ArePassedOverOrBounded) {
    const std::string right = Explored();
    for (auto slip = Slip::None; slip <= Slip::NoRowsOfSome; slip = Slip(int(slip) + 1)) {
        ErringHost host(Host(), slip);
        EXPECT_EQ(Explored(), right) << int(slip);
    }
    for (const Slip slip : {Slip::None, Slip::MoreThanAsked, Slip::OwnArray}) {
        ErringBlocks blocks(*Analysis().GetCaseBlocks(), slip);
        EXPECT_EQ(Explored(), right) << int(slip);
    }
    for (const Slip slip : {Slip::NegativeCount, Slip::NoColumn}) {
        ErringBlocks blocks(*Analysis().GetCaseBlocks(), slip);
        EXPECT_EQ(Analysis().ReadAfterDrill(0), 0) << "ends as cancelled, " << int(slip);
    }
    EXPECT_TRUE(TakeMessages().empty());
}

/// A variable whose counts are known, and another that is counted anew until the user cancels.
TEST_F(WrongAnswers, ACancelledRecountAsksNoMoreWhenColumnsOrMemoryAreMissing) {
    ErringHost host(Host(), Slip::None);
    Analysis().SetMD(0);  // each column is read for itself
    Choose({}, {"a", "b"});
    const auto recountCancelled = [&](int failing, Slip slip) {
        host.TheSlip = Slip::None;
        Recount();
        Record("a").NeatCount = Record("a").NeatCount % 10 + 1;
        Record("a").MakeNeatCategories();
        TakeMessages();
        host.TheSlip = slip;
        CancelAt(150);
        Host().FailAllocation(failing);
        EXPECT_EQ(Analysis().ReadBeforeDrill(0), 0);
        const bool reached = failing == 0 || Host().AllocationCalls() >= failing;
        Host().FailAllocation(0);
        EXPECT_TRUE(Polls() == 150 ? TakeMessages().empty() : Polls() == 0 && TakeMessages().size() == 1) << failing;
        CancelAt(0);
        return reached;
    };
    recountCancelled(0, Slip::None);
    EXPECT_GT(Record("b").CategorySet.begin()->Count, 0) << "counted again up to the cancel";
    for (int call = 1; recountCancelled(call, Slip::None) && !HasFailure(); ++call) {
    }
    recountCancelled(0, Slip::NoSecondColumn);
    EXPECT_EQ(Record("b").CategorySet.begin()->Count, 0);
}

TEST_F(WrongAnswers, CountsAreRememberedOnlyForTheCasesThatWereCounted) {
    ErringHost host(Host(), Slip::None);
    std::uint64_t& revision = Host().State().Quick.Revision;
    Choose({}, {"b"});
    const auto columnsOfRecount = [&] {
        host.ColumnsAsked = 0;
        Recount();
        return host.ColumnsAsked;
    };
    EXPECT_EQ(columnsOfRecount(), 1);
    EXPECT_EQ(columnsOfRecount(), 0);
    Host().Services.BreakRequested = [&] { return ++revision == 0; };
    EXPECT_EQ(columnsOfRecount(), 0);  // known; the polls find new cases
    EXPECT_EQ(columnsOfRecount(), 1);
    EXPECT_EQ(columnsOfRecount(), 1);
    Host().Services.BreakRequested = nullptr;
    EXPECT_EQ(columnsOfRecount(), 1);
    EXPECT_EQ(columnsOfRecount(), 0);
    EXPECT_NE(Analysis().Counted, nullptr);
    Analysis().ResetMembers();
    EXPECT_EQ(Analysis().Counted, nullptr) << "of another table, whose revisions may begin anew";
}

}  // namespace drilltest

/// The host's answer, in place of which a test may put its own.
CaseBlocks* CAnalysisSupport::GetCaseBlocks() {
    using Operation = CaseBlocks* (*)(CAnalysisSupport*);
    static const auto hosts = reinterpret_cast<Operation>(dlsym(RTLD_NEXT, "_ZN16CAnalysisSupport13GetCaseBlocksEv"));
    CaseBlocks* const own = drilltest::ErringBlocks::Offered;
    return own != nullptr ? own : hosts(this);
}
