// The module on both roads against the plain reference, on random tables under random operations.

#include <algorithm>
#include <array>

#include "tests/engine/RandomTables.h"
#include "tests/engine/ReferencePasses.h"

namespace drilltest {

namespace {

/// A verb of an exploration: how often it comes, how the module carries it out, and the reference if it knows it. Each
/// gets the same random numbers.
struct Verb {
    const char* Name;
    std::size_t Share;
    int (*OnModule)(DrillBench&, Random);
    int (*OnPlain)(ReferencePasses&, Random);
};

VariableLists ListsFor(const DrillBench& bench, Random random) {
    return RandomLists(random, static_cast<std::size_t>(bench.Analysis().Table.Variables));
}

int ChangeSettings(DrillBench& bench, Random random) {
    CDrillDown& analysis = bench.Analysis();
    for (std::int16_t* flag : {&analysis.WeightedMoments, &analysis.CasewiseDeletionOfMD,
                               &analysis.RVCasewiseDeletionOfMD, &analysis.DataChanged}) {
        *flag = Chance(random, 2) ? 1 : 0;
    }
    return 0;
}

/// A record of a set, or null without any.
Drill* AnyRecord(Random& random, const CDrillDown::DrillSet* set) {
    return set->empty() ? nullptr
                        : &Editable(*std::next(set->begin(), static_cast<std::ptrdiff_t>(Pick(random, set->size()))));
}

int Categorize(DrillBench& bench, Random random) {
    CDrillDown& analysis = bench.Analysis();
    if (Drill* record = AnyRecord(random, Chance(random, 4) ? analysis.Reviews : analysis.DrillDowns)) {
        CategorizeAnyhow(random, *record, bench.ValuesOf(record->VarNo));
        analysis.DataChanged = 1;
    }
    return 0;
}

int DrillDown(DrillBench& bench, Random random) {
    if (const Drill* record = AnyRecord(random, bench.Analysis().DrillDowns)) {
        bench.Focus(record->VarNo);
        const int rows = DrillBench::Rows(*CDrillDown::FindRecord(bench.Analysis().DrillDowns, record->VarNo));
        bench.Take(static_cast<int>(Pick(random, static_cast<std::size_t>(rows) + 1)));
    }
    return 0;
}

int DrillUp(DrillBench& bench, Random random) {
    if (const std::size_t steps = bench.Analysis().DrillUps->size(); steps > 0) {
        bench.UpPlace(static_cast<int>(Pick(random, steps)));
    }
    return 0;
}

using Bench = DrillBench;
using Plain = ReferencePasses;

// clang-format off
constexpr std::array<Verb, 10> Verbs{{
    {"ChangeSettings", 2, ChangeSettings, nullptr},
    {"Choose", 1, [](Bench& b, Random r) { return b.ChooseLists(ListsFor(b, r)); },
     [](Plain& p, Random r) { return p.Choose(RandomLists(r, p.Table.Variables.size())); }},
    {"Review", 1, [](Bench& b, Random r) { return b.ReviewLists(ListsFor(b, r)); },
     [](Plain& p, Random r) { return p.Review(RandomLists(r, p.Table.Variables.size())); }},
    {"Categorize", 4, Categorize, nullptr},
    {"DrillDown", 4, DrillDown, nullptr},
    {"DrillUp", 2, DrillUp, nullptr},
    {"ReadAfterDrill", 3, [](Bench& b, Random) { return b.Analysis().ReadAfterDrill(0); },
     [](Plain& p, Random) { return p.ReadAfterDrill(); }},
    {"ReadBeforeDrill", 3, [](Bench& b, Random) { return b.Analysis().ReadBeforeDrill(0); },
     [](Plain& p, Random) { return p.ReadBeforeDrill(); }},
    {"FillNeatIntervals", 1, [](Bench& b, Random) { return b.Analysis().FillNeatIntervals(); },
     [](Plain& p, Random) { return p.FillIntervals(false); }},
    {"FillContinuousIntervals", 1, [](Bench& b, Random) { return b.Analysis().FillContinuousIntervals(); },
     [](Plain& p, Random) { return p.FillIntervals(true); }},
}};
// clang-format on

/// A random table, the same operations on the module on every road, and each pass on the reference too.
class Exploration {
  public:
    Exploration(std::uint64_t seed, TableStyle style, std::int32_t cases)
        : Source(seed), Table(RandomTable(Source, style, cases)), Done("table " + std::to_string(seed)) {
        if (!Chance(Source, 3)) {
            Reference.Weight = Table.Variables.size() - 1;
        }
        if (!Chance(Source, 3)) {
            for (std::int32_t row = 0; row < Table.Cases; ++row) {
                Reference.Selection.push_back(Chance(Source, 5) ? CaseResult::Skip : CaseResult::Use);
            }
        }
        for (DrillBench* bench : {&Cases, &Columns}) {
            bench->Open(Table);
            bench->Host().SetWeight(Reference.Weight);
            bench->Host().SetSelection(Reference.Selection);
        }
    }

    /// Begins with ChangeSettings, Choose and Review and goes on with any verbs by their share.
    void Explore(std::size_t operations) {
        for (std::size_t i = 0; i < operations && !testing::Test::HasFailure(); ++i) {
            Apply(i < 3 ? Verbs[i] : AnyVerb());
        }
    }

    void Apply(const Verb& verb) {
        const Random random(Source());
        Done += std::string(" ") + verb.Name;
        Reference.Adopt(Cases.Analysis());
        Reference.Polls = Cases.Polls();
        const int result = verb.OnModule(Cases, random);
        ASSERT_EQ(verb.OnModule(Columns, random), result) << Done;
        CompareRoads();
        if (verb.OnPlain != nullptr) {
            ASSERT_EQ(result, verb.OnPlain(Reference, random)) << Done;
            CompareWithReference();
        }
    }

    /// Cancels at the n-th poll from now on.
    void CancelAt(int poll) {
        Cases.CancelAt(poll);
        Columns.CancelAt(poll);
        Reference.CancelPoll = poll;
    }
    [[nodiscard]] int Polls() const { return Cases.Polls(); }

  private:
    const Verb& AnyVerb() {
        const Verb* verb = Verbs.data();
        for (std::size_t share = Pick(Source, 22); share >= verb->Share; ++verb) {
            share -= verb->Share;
        }
        return *verb;
    }

    void CompareRoads() const {
        const CDrillDown& cases = Cases.Analysis();
        const CDrillDown& columns = Columns.Analysis();
        ASSERT_EQ(Columns.Polls(), Cases.Polls()) << Done;
        ASSERT_EQ(Columns.State(), Cases.State()) << Done;
        for (auto set : {&CDrillDown::DrillDowns, &CDrillDown::DrillUps, &CDrillDown::Reviews}) {
            ExpectSame(Copied(columns.*set), Copied(cases.*set), true, Done);
        }
    }

    void CompareWithReference() const {
        const CDrillDown& module = Cases.Analysis();
        ASSERT_EQ(Cases.Polls(), Reference.Polls) << Done;
        ASSERT_EQ(module.ValidVar, Reference.ValidVar) << Done;
        ASSERT_EQ(module.DataChanged, Reference.DataChanged) << Done;
        ExpectSame(Copied(module.DrillDowns), Reference.Drills.Open, false, Done);
        ExpectSame(Copied(module.Reviews), Reference.Reviews.Open, false, Done);
    }

    Random Source;
    quillara::DataTable Table;
    DrillBench Cases{Road::CaseByCase};
    DrillBench Columns{Road::Columns};
    ReferencePasses Reference{Table};
    std::string Done;
};

}  // namespace

TEST(RandomTables, ComeOutTheSameOnEveryRoad) {
    struct Kind {
        std::uint64_t Tables;
        TableStyle Style;
        std::uint64_t Cases, MoreCases;
        std::size_t Operations;
    };
    const Kind kinds[] = {
        {2000, TableStyle::Anything, 0, 61, 18},
        {30, TableStyle::Anything, 1000, 2000, 12},  // several blocks
        {16, TableStyle::ManyValues, 3800, 800, 8},  // about as many values as a record keeps
    };
    for (const Kind& kind : kinds) {
        for (std::uint64_t seed = 1; seed <= kind.Tables && !HasFailure(); ++seed) {
            const auto cases = static_cast<std::int32_t>(kind.Cases + seed * 113 % kind.MoreCases);
            Exploration(seed, kind.Style, cases).Explore(kind.Operations);
        }
    }
}

TEST(RandomTables, CancelledAtAnyCaseComeOutTheSameOnEveryRoad) {
    for (const Verb& verb : Verbs) {
        for (std::uint64_t seed = 1; seed <= 12; ++seed) {
            bool reached = true;
            for (int poll = 1; reached && !HasFailure(); ++poll) {
                Exploration exploration(seed, TableStyle::Anything, 8);
                exploration.Explore(10);
                exploration.CancelAt(poll);
                exploration.Apply(verb);
                reached = exploration.Polls() >= poll;
                exploration.Apply(Verbs[7]);
            }
        }
    }
}

}  // namespace drilltest
