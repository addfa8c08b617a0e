// Steps may be undone in any order. Whatever the order, the cases that remain, and the statistics and categories of
// every open and review variable, are to the last bit those of an analysis that took only the steps that are left,
// with the bounds that those steps froze. Only the order of the open variables and whether their counts are fresh
// depend on the way.

#include <algorithm>

#include "tests/engine/Exploration.h"

namespace drilltest {

namespace {

/// A record without what depends on the way.
Drill Comparable(Drill record) {
    record.Order = 0;
    record.Isset = 0;
    return record;
}

std::string SetDifference(const CDrillDown::DrillSet& left, const CDrillDown::DrillSet& right) {
    std::string differences = left.size() == right.size() ? "" : "sizes differ";
    for (const Drill& record : left) {
        const auto other =
            std::find_if(right.begin(), right.end(), [&](const Drill& each) { return each.VarNo == record.VarNo; });
        differences += other == right.end() ? "absent" : Difference(Comparable(record), Comparable(*other), true);
    }
    return differences;
}

std::string Differences(const CDrillDown& left, const CDrillDown& right) {
    return SetDifference(*left.DrillDowns, *right.DrillDowns) + SetDifference(*left.DrillUps, *right.DrillUps) +
           SetDifference(*left.Reviews, *right.Reviews) + (left.ValidVar == right.ValidVar ? "" : "cases differ");
}

/// A random exploration down to the last variable, the same for the same seed.
struct UndoSession {
    UndoSession(std::uint64_t seed, Road road) : Random(seed), Bench(road) {
        const quillara::DataTable table = RandomTable(Random, TableStyle::PlainNumbers, 20 + Pick(Random, 80));
        Bench.Open(table);
        Bench.Weigh("weight");
        quillara::VariableLists drills;
        quillara::VariableLists reviews;
        for (std::int16_t var = 1; var < static_cast<std::int16_t>(table.Variables.size()); ++var) {
            (Chance(Random, 2) ? drills.First : drills.Second).push_back(var);
            (Chance(Random, 2) ? reviews.First : reviews.Second).push_back(var);
        }
        Bench.ChooseLists(drills);
        Bench.ReviewLists(reviews);
        for (const std::int16_t var : drills.Second) {
            Categorize(Editable(*Bench.Analysis().LookFor(var, Bench.Analysis().DrillDowns)),
                       RandomOperation(Random, table, Operation::Categorize).Method);
        }
        Bench.Analysis().DataChanged = 1;
        Bench.Recount();
    }

    void DrillDown() {
        CDrillDown& analysis = Bench.Analysis();
        while (!analysis.DrillDowns->empty()) {
            const auto place = static_cast<std::ptrdiff_t>(Pick(Random, analysis.DrillDowns->size()));
            const std::int16_t var = std::next(analysis.DrillDowns->begin(), place)->VarNo;
            Bench.Focus(var);
            const int rows = DrillBench::Rows(*analysis.LookFor(var, analysis.DrillDowns));
            Bench.Take(static_cast<int>(Pick(Random, static_cast<std::size_t>(rows) + 1)));
        }
    }

    drilltest::Random Random;
    DrillBench Bench;
};

/// Takes exactly the given steps, each with its frozen categories.
void TakeFrozen(CDrillDown& analysis, const CDrillDown::DrillSet& steps) {
    for (const Drill& step : steps) {
        analysis.DrillDowns->erase(analysis.LookFor(step.VarNo, analysis.DrillDowns));
        analysis.DrillUps->insert(step);
    }
    analysis.ReadAfterDrill(0);
}

}  // namespace

TEST(UndoOrder, LeavesWhatTheRemainingStepsAloneWouldGive) {
    for (std::uint64_t seed = 1; seed <= 150 && !testing::Test::HasFailure(); ++seed) {
        const Road road = seed % 2 == 0 ? Road::Columns : Road::CaseByCase;
        UndoSession session(seed, road);
        session.DrillDown();
        CDrillDown& analysis = session.Bench.Analysis();
        while (!analysis.DrillUps->empty()) {
            session.Bench.UpPlace(static_cast<int>(Pick(session.Random, analysis.DrillUps->size())));
            UndoSession fresh(seed, road);
            TakeFrozen(fresh.Bench.Analysis(), *analysis.DrillUps);
            ASSERT_EQ(Differences(analysis, fresh.Bench.Analysis()), "") << "table " << seed;
        }
    }
}

}  // namespace drilltest
