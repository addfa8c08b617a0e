// Steps may be undone in any order. Whatever the order, the cases that remain, and the statistics and categories of
// every open and review variable, are to the last bit those of an analysis that took only the steps that are left,
// with the bounds that those steps froze. Only the order of the open variables and whether their counts are fresh
// depend on the way.

#include <algorithm>

#include "tests/engine/RandomTables.h"

namespace drilltest {

namespace {

/// The records by their variables, without what depends on the way.
std::vector<Drill> Comparable(const CDrillDown::DrillSet* set) {
    std::vector<Drill> records = Copied(set);
    std::sort(records.begin(), records.end(), [](auto& left, auto& right) { return left.VarNo < right.VarNo; });
    for (Drill& record : records) {
        record.Order = record.Isset = 0;
    }
    return records;
}

/// A random exploration down to the last variable, the same for the same seed.
struct UndoSession : DrillBench {
    UndoSession(std::uint64_t seed, Road road) : DrillBench(road), Source(seed) {
        const quillara::DataTable table = RandomTable(Source, TableStyle::PlainNumbers, 20 + Pick(Source, 80));
        Open(table);
        Weigh("weight");
        VariableLists drills;
        VariableLists reviews;
        for (std::int16_t var = 1; var < static_cast<std::int16_t>(table.Variables.size()); ++var) {
            (Chance(Source, 2) ? drills.First : drills.Second).push_back(var);
            (Chance(Source, 2) ? reviews.First : reviews.Second).push_back(var);
        }
        ChooseLists(drills);
        ReviewLists(reviews);
        for (const std::int16_t var : drills.Second) {
            CategorizeAnyhow(Source, *CDrillDown::FindRecord(Analysis().DrillDowns, var), ValuesOf(var));
        }
        Analysis().DataChanged = 1;
        Recount();
    }

    void DrillDown() {
        const CDrillDown::DrillSet& open = *Analysis().DrillDowns;
        while (!open.empty()) {
            const Drill& record = *std::next(open.begin(), static_cast<std::ptrdiff_t>(Pick(Source, open.size())));
            Focus(record.VarNo);
            Take(static_cast<int>(Pick(Source, static_cast<std::size_t>(Rows(record)) + 1)));
        }
    }

    /// Takes exactly the given steps, each with its frozen categories.
    void TakeFrozen(const CDrillDown::DrillSet& steps) {
        for (const Drill& step : steps) {
            Analysis().DrillDowns->erase(Analysis().LookFor(step.VarNo, Analysis().DrillDowns));
            Analysis().DrillUps->insert(step);
        }
        Analysis().ReadAfterDrill(0);
    }

    Random Source;
};

}  // namespace

TEST(UndoOrder, LeavesWhatTheRemainingStepsAloneWouldGive) {
    for (std::uint64_t seed = 1; seed <= 150 && !testing::Test::HasFailure(); ++seed) {
        UndoSession session(seed, Road::Columns);
        session.DrillDown();
        const CDrillDown& left = session.Analysis();
        while (!left.DrillUps->empty()) {
            session.UpPlace(static_cast<int>(Pick(session.Source, left.DrillUps->size())));
            UndoSession fresh(seed, Road::Columns);
            fresh.TakeFrozen(*left.DrillUps);
            const CDrillDown& right = fresh.Analysis();
            for (auto set : {&CDrillDown::DrillDowns, &CDrillDown::DrillUps, &CDrillDown::Reviews}) {
                ExpectSame(Comparable(left.*set), Comparable(right.*set), true, "table " + std::to_string(seed));
            }
            ASSERT_EQ(left.ValidVar, right.ValidVar) << "table " << seed;
        }
    }
}

}  // namespace drilltest
