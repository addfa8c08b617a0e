// The module on both roads against the plain reference, on random tables under random operations.

#include <algorithm>
#include <array>
#include <memory>
#include <numeric>

#include "tests/engine/RandomTables.h"
#include "tests/engine/ReferenceAnalysis.h"

namespace drilltest {

namespace {

/// The module with the operations of the reference.
struct Bench : DrillBench {
    using DrillBench::DrillBench;
    int ReadAfterDrill() { return Analysis().ReadAfterDrill(0); }
    int ReadBeforeDrill() { return Analysis().ReadBeforeDrill(0); }
    int FillIntervals(bool remaining) {
        return remaining ? Analysis().FillContinuousIntervals() : Analysis().FillNeatIntervals();
    }
    int ReorderOpen(const std::vector<std::int32_t>& places) { return Reorder(&CDrillDown::ReorderDrillDowns, places); }
    int ReorderSteps(const std::vector<std::int32_t>& places) { return Reorder(&CDrillDown::ReorderDrillUps, places); }
    template <typename Operation>
    int Reorder(Operation operation, const std::vector<std::int32_t>& places) {
        const auto entries = static_cast<int>(places.size());
        const auto unplaced = static_cast<int>(std::ranges::count(places, -1));
        return (Analysis().*operation)(places.data(), entries, entries - unplaced);
    }
    std::size_t Variables() const { return static_cast<std::size_t>(Analysis().Table.Variables); }
    const CDrillDown::DrillSet& OpenRecords() const { return *Analysis().DrillDowns; }
    const CDrillDown::DrillSet& StepRecords() const { return *Analysis().DrillUps; }
};

using Plain = ReferenceAnalysis;

/// A verb of an exploration: how often it comes, and how the module and, if it knows it, the reference carry it out.
/// Each gets the same random numbers.
struct Verb {
    template <typename Act>
    constexpr Verb(const char* name, std::size_t share, Act act) : Name(name), Share(share), OnModule(act) {
        if constexpr (std::is_invocable_v<Act, Plain&, Random>) {
            OnPlain = act;
        }
    }
    const char* Name;
    std::size_t Share;
    int (*OnModule)(Bench&, Random);
    int (*OnPlain)(Plain&, Random) = nullptr;
};

template <typename Records>
const Drill& AnyOf(Random& random, const Records& records) {
    return *std::next(records.begin(), static_cast<std::ptrdiff_t>(Pick(random, records.size())));
}

int ChangeSettings(Bench& bench, Random random) {
    CDrillDown& analysis = bench.Analysis();
    for (std::int16_t* flag : {&analysis.WeightedMoments, &analysis.CasewiseDeletionOfMD,
                               &analysis.RVCasewiseDeletionOfMD, &analysis.DataChanged}) {
        *flag = Chance(random, 2) ? 1 : 0;
    }
    return 0;
}

int Categorize(Bench& bench, Random random) {
    CDrillDown& analysis = bench.Analysis();
    const CDrillDown::DrillSet& records = Chance(random, 4) ? *analysis.Reviews : *analysis.DrillDowns;
    if (!records.empty()) {
        Drill& record = Editable(AnyOf(random, records));
        CategorizeAnyhow(random, record, bench.ValuesOf(record.VarNo));
        analysis.DataChanged = 1;
    }
    return 0;
}

/// Drills on a row of a list or on Missing, more often where few rows keep many cases; of two records of a variable the
/// first one moves.
template <typename Analysis>
int MoveDown(Analysis& analysis, Random& random) {
    const auto& open = analysis.OpenRecords();
    const Drill& one = AnyOf(random, open);
    const Drill& other = AnyOf(random, open);
    const std::int16_t var = (Bench::Rows(other) < Bench::Rows(one) ? other : one).VarNo;
    const Drill& moved = *std::ranges::find(open, var, &Drill::VarNo);
    return analysis.MoveDown(var, static_cast<int>(Pick(random, static_cast<std::size_t>(Bench::Rows(moved)) + 1)));
}

/// New places for some of so many records; -1: none.
std::vector<std::int32_t> AnyPlaces(Random& random, std::size_t records) {
    std::vector<std::int32_t> places(records, -1);
    std::iota(places.begin(), places.begin() + static_cast<std::ptrdiff_t>(Pick(random, records + 1)), 0);
    std::ranges::shuffle(places, random);
    return places;
}

// clang-format off
constexpr std::array<Verb, 12> Verbs{{
    {"ChangeSettings", 2, ChangeSettings},
    {"Choose",         1, [](auto& a, Random r) { return a.ChooseLists(RandomLists(r, a.Variables())); }},
    {"Review",         1, [](auto& a, Random r) { return a.ReviewLists(RandomLists(r, a.Variables())); }},
    {"Categorize",     4, Categorize},
    {"MoveDown",       4, [](auto& a, Random r) { return a.OpenRecords().empty() ? 1 : MoveDown(a, r); }},
    {"MoveUp",         3, [](auto& a, Random r) { return a.StepRecords().empty() ? 1 : a.MoveUp(AnyOf(r, a.StepRecords()).VarNo); }},
    {"ReorderOpen",    1, [](auto& a, Random r) { return a.ReorderOpen(AnyPlaces(r, a.OpenRecords().size())); }},
    {"ReorderSteps",   1, [](auto& a, Random r) { return a.ReorderSteps(AnyPlaces(r, a.StepRecords().size())); }},
    {"ReadAfterDrill",  6, [](auto& a, Random) { return a.ReadAfterDrill(); }},
    {"ReadBeforeDrill", 5, [](auto& a, Random) { return a.ReadBeforeDrill(); }},
    {"FillNeatIntervals",       1, [](auto& a, Random) { return a.FillIntervals(false); }},
    {"FillContinuousIntervals", 1, [](auto& a, Random) { return a.FillIntervals(true); }},
}};
// clang-format on
constexpr std::size_t AllShares = 30;
constexpr const Verb& ReadAfterDrill = Verbs[8];
constexpr const Verb& ReadBeforeDrill = Verbs[9];

/// Leaves the group of a table of many values.
constexpr Verb StepIntoGroup{"StepIntoGroup", 0, [](auto& a, Random) {
                                 return a.ChooseLists(VariableLists{{1, 2, 3}, {}}) == 1 ? a.MoveDown(1, 0) : 0;
                             }};

/// One pass over the cases and no more: where memory is lacking it says so and gives 0.
bool IsPass(const Verb& verb) {
    return &verb >= &ReadAfterDrill;
}

/// Records without what a pass may leave undone where memory is lacking: names, and Isset and all categories if it
/// fails.
std::vector<Drill> Stripped(const std::vector<Drill>& drills, const std::vector<Drill>& reviews, bool failed) {
    std::vector<Drill> records = drills;
    records.insert(records.end(), reviews.begin(), reviews.end());
    for (Drill& record : records) {
        record.Isset = failed ? 0 : record.Isset;
        record.CategorySet = failed ? std::set<Categories>() : record.CategorySet;
    }
    return records;
}

QuickServices AnyServices(Random& random) {
    static constexpr std::array<QuickServices::Answer, 3> answers{
        QuickServices::Answer::None, QuickServices::Answer::Bits, QuickServices::Answer::Rows};
    static constexpr std::array<std::int32_t, 5> threads{0, 1, 2, 3, 16};
    static constexpr std::array<std::int32_t, 4> blocks{1, 7, 64, 32768};
    return {!Chance(random, 8), answers[Pick(random, answers.size())], threads[Pick(random, threads.size())],
            blocks[Pick(random, blocks.size())], !Chance(random, 8)};
}

/// A random table, the same operations on the module on every road, and those it knows on the reference too.
class Exploration {
  public:
    Exploration(std::uint64_t seed, TableStyle style, std::int32_t cases)
        : Source(seed), Style(style), Table(RandomTable(Source, style, cases)), Done("table " + std::to_string(seed)) {
        if (!Chance(Source, 3)) {
            Reference.Weight = Table.Variables.size() - 1;
        }
        if (!Chance(Source, 3)) {
            for (std::int32_t row = 0; row < Table.Cases; ++row) {
                Reference.Selection.push_back(IsSkipped(row) ? CaseResult::Skip : CaseResult::Use);
            }
        }
        Others.push_back(std::make_unique<Bench>(Road::Columns));
        Others.push_back(std::make_unique<Bench>(Road::Quick, AnyServices(Source)));
        Others.push_back(std::make_unique<Bench>(Road::Quick, AnyServices(Source)));
        Others.push_back(std::make_unique<Bench>(Road::Workbench));
        ForEach([&](Bench& bench) {
            bench.Open(Table);
            bench.Weigh(Reference.Weight);
            bench.Select(Reference.Selection);
        });
    }

    /// Begins with ChangeSettings, Choose and Review, among many values with a step, and goes on with any verbs by
    /// their share.
    void Explore(std::size_t operations) {
        for (std::size_t i = 0; i < operations && !testing::Test::HasFailure(); ++i) {
            Apply(i < 3 ? Verbs[i] : i == 3 && Style == TableStyle::ManyValues ? StepIntoGroup : AnyVerb());
        }
    }

    void Apply(const Verb& verb) {
        const Random random(Source());
        Done += std::string(" ") + verb.Name;
        Reference.Adopt(Cases.Analysis());
        Reference.Polls = Cases.Polls();
        const int result = verb.OnModule(Cases, random);
        for (const auto& other : Others) {
            ASSERT_EQ(verb.OnModule(*other, random), result) << Done;
            CompareRoads(*other);
        }
        if (verb.OnPlain != nullptr) {
            ASSERT_EQ(result, verb.OnPlain(Reference, random)) << Done;
            CompareWithReference();
        }
    }

    // A disturbed verb, and what comes after it. False when the verb doesn't get that far.

    /// Cancels at the n-th poll.
    bool ApplyCancelled(const Verb& verb, int poll) {
        CancelAt(poll);
        Apply(verb);
        const bool reached = Cases.Polls() >= poll;
        Apply(ReadBeforeDrill);
        return reached;
    }
    /// Lets the n-th call for memory fail; the roads take memory at different places. Then the verb is repeated, a pass
    /// on records that a drill pass has made alike again.
    bool ApplyWithoutMemory(const Verb& verb, int call) {
        Apply(ReadBeforeDrill);
        const Random random(Source());
        bool reached = false;
        ForEach([&](Bench& bench) { reached = FailsAt(bench, verb, random, call) || reached; });
        CancelAt(0);
        Apply(IsPass(verb) ? ReadAfterDrill : verb);
        Apply(verb);
        return reached;
    }

  private:
    bool IsSkipped(std::int32_t row) {
        const quillara::Variable& group = Table.Variables.front();
        return Style == TableStyle::ManyValues ? group.IsMissing(group.Values[static_cast<std::size_t>(row)])
                                               : Chance(Source, 5);
    }

    const Verb& AnyVerb() {
        const Verb* verb = Verbs.data();
        for (std::size_t share = Pick(Source, AllShares); share >= verb->Share; ++verb) {
            share -= verb->Share;
        }
        return *verb;
    }

    void CancelAt(int poll) {
        ForEach([&](Bench& bench) { bench.CancelAt(poll); });
        Reference.CancelPoll = poll;
    }

    bool FailsAt(Bench& bench, const Verb& verb, Random random, int call) {
        SCOPED_TRACE(Done + ' ' + verb.Name + " without memory at " + std::to_string(call));
        const std::size_t live = bench.Host().LiveAllocations();
        Reference.Adopt(bench.Analysis());
        bench.Host().FailAllocation(call);
        const int result = verb.OnModule(bench, random);
        const bool reached = bench.Host().AllocationCalls() >= call;
        bench.Host().FailAllocation(0);
        const Names messages = bench.TakeMessages();
        const bool failed = !messages.empty();
        EXPECT_EQ(messages, Names(failed ? 1 : 0, NotEnoughMemory));
        EXPECT_EQ(bench.Host().LiveAllocations(), live);
        EXPECT_TRUE(reached || call > 1 || !IsPass(verb)) << "takes no memory";
        EXPECT_TRUE(!IsPass(verb) || result == (failed ? 0 : 1));
        const bool succeeded = result == 1 && !failed;
        if (succeeded) {
            EXPECT_EQ(verb.OnPlain(Reference, random), 1);
        }
        if (succeeded || IsPass(verb)) {
            const CDrillDown& module = bench.Analysis();
            EXPECT_EQ(module.DataChanged, Reference.DataChanged);
            ExpectSame(Stripped(Copied(module.DrillDowns), Copied(module.Reviews), failed),
                       Stripped(Reference.Drills.Open, Reference.Reviews.Open, failed), false, "");
        }
        return reached;
    }

    void CompareRoads(const Bench& other) const {
        const CDrillDown& cases = Cases.Analysis();
        ASSERT_EQ(other.Polls(), Cases.Polls()) << Done;
        ASSERT_EQ(other.State(), Cases.State()) << Done;
        for (auto set : {&CDrillDown::DrillDowns, &CDrillDown::DrillUps, &CDrillDown::Reviews}) {
            ExpectSame(Copied(other.Analysis().*set), Copied(cases.*set), true, Done);
        }
    }

    template <typename Do>
    void ForEach(Do act) {
        act(Cases);
        for (const auto& other : Others) {
            act(*other);
        }
    }

    void CompareWithReference() const {
        const CDrillDown& module = Cases.Analysis();
        ASSERT_EQ(Cases.Polls(), Reference.Polls) << Done;
        ASSERT_EQ(module.ValidVar, Reference.ValidVar) << Done;
        ASSERT_EQ(module.DataChanged, Reference.DataChanged) << Done;
        ExpectSame(Copied(module.DrillDowns), Reference.Drills.Open, false, Done);
        ExpectSame(Copied(module.DrillUps), Reference.Steps, false, Done);
        ExpectSame(Copied(module.Reviews), Reference.Reviews.Open, false, Done);
    }

    Random Source;
    TableStyle Style;
    quillara::DataTable Table;
    Bench Cases{Road::CaseByCase};
    std::vector<std::unique_ptr<Bench>> Others;  // on other roads
    Plain Reference{Table};
    std::string Done;
};

/// Disturbs each verb at the first, the second, ... place at which it can be disturbed, in the same explorations.
void DisturbEverywhere(bool (Exploration::*apply)(const Verb&, int place)) {
    for (const Verb& verb : Verbs) {
        for (std::uint64_t seed = 1; seed <= 12; ++seed) {
            bool reached = true;
            for (int place = 1; reached && !testing::Test::HasFailure(); ++place) {
                Exploration exploration(seed, TableStyle::Anything, 8);
                exploration.Explore(10);
                reached = (exploration.*apply)(verb, place);
            }
        }
    }
}

}  // namespace

TEST(RandomTables, ComeOutTheSameOnEveryRoad) {
    struct Kind {
        std::uint64_t Tables;
        TableStyle Style;
        std::uint64_t Cases, MoreCases;
        std::size_t Operations;
    };
    const Kind kinds[] = {
        {2000, TableStyle::Anything, 0, 61, 24},
        {30, TableStyle::Anything, 1000, 2000, 16},  // several blocks
        {16, TableStyle::ManyValues, 2700, 900, 14},  // about as many values as a record keeps
    };
    for (const Kind& kind : kinds) {
        for (std::uint64_t seed = 1; seed <= kind.Tables && !HasFailure(); ++seed) {
            const auto cases = static_cast<std::int32_t>(kind.Cases + seed * 113 % kind.MoreCases);
            Exploration(seed, kind.Style, cases).Explore(kind.Operations);
        }
    }
}

TEST(RandomTables, CancelledAtAnyCaseComeOutTheSameOnEveryRoad) {
    DisturbEverywhere(&Exploration::ApplyCancelled);
}

TEST(RandomTables, WithoutMemoryAtAnyCallTellAndLeaveNothingBehind) {
    DisturbEverywhere(&Exploration::ApplyWithoutMemory);
}

}  // namespace drilltest
