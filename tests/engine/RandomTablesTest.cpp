// The module on both roads against the plain reference, on random tables under random operations.

#include "tests/engine/Exploration.h"

namespace drilltest {

namespace {

/// Verbs by how often they come; the first two operations of a table are always Choose and Review.
constexpr std::array UsualVerbs{
    Operation::Settings,
    Operation::Settings,
    Operation::Categorize,
    Operation::Categorize,
    Operation::Categorize,
    Operation::Categorize,
    Operation::Select,
    Operation::Weigh,
    Operation::Down,
    Operation::Down,
    Operation::Down,
    Operation::Down,
    Operation::Up,
    Operation::Up,
    Operation::ReadAfterDrill,
    Operation::ReadBeforeDrill,
    Operation::ReadBeforeDrill,
    Operation::ReadBeforeDrill,
    Operation::MarkStale,
    Operation::FillNeatIntervals,
    Operation::FillContinuousIntervals,
    Operation::Review,
    Operation::Choose,
    Operation::SetContinuousIntervals,
    Operation::SetNeatIntervals,
};

Operation::Verb VerbAt(Random& random, int place) {
    static constexpr std::array beginning{Operation::Weigh, Operation::Settings, Operation::Choose, Operation::Review};
    return place < static_cast<int>(beginning.size()) ? beginning[static_cast<std::size_t>(place)]
                                                      : UsualVerbs[Pick(random, UsualVerbs.size())];
}

/// Explores one table; stops at the first difference.
void Explore(std::uint64_t seed, TableStyle style, std::int32_t cases, int operations) {
    Random random(seed);
    const quillara::DataTable table = RandomTable(random, style, cases);
    Exploration exploration(table);
    std::string done = "table " + std::to_string(seed) + '\n';
    for (int i = 0; i < operations && !testing::Test::HasFailure(); ++i) {
        const Operation operation = RandomOperation(random, table, VerbAt(random, i));
        exploration.Apply(operation);
        done += Text(operation);
        ASSERT_EQ(exploration.Differences(), "") << done;
    }
}

std::int32_t SmallSize(std::uint64_t seed) {
    return static_cast<std::int32_t>((seed * 31) % 61);
}

/// Cancels one operation at every poll and goes on behind it.
void CancelEverywhere(std::uint64_t seed, Operation::Verb verb) {
    bool reached = true;
    for (int poll = 1; reached && !testing::Test::HasFailure(); ++poll) {
        Random random(seed);
        const quillara::DataTable table = RandomTable(random, TableStyle::Anything, 8);
        Exploration exploration(table);
        for (int i = 0; i < 10; ++i) {
            exploration.Apply(RandomOperation(random, table, VerbAt(random, i)));
        }
        const Operation cancelled = RandomOperation(random, table, verb);
        exploration.CancelAt(poll);
        exploration.Apply(cancelled);
        reached = exploration.Polls() >= poll;
        ASSERT_EQ(exploration.Differences(), "") << "table " << seed << " poll " << poll << ' ' << Text(cancelled);
        exploration.Apply(RandomOperation(random, table, Operation::ReadBeforeDrill));
        ASSERT_EQ(exploration.Differences(), "") << "behind table " << seed << " poll " << poll;
    }
}

}  // namespace

TEST(RandomTables, SmallTablesComeOutTheSameOnEveryRoad) {
    for (std::uint64_t seed = 1; seed <= 2000 && !HasFailure(); ++seed) {
        Explore(seed, TableStyle::Anything, SmallSize(seed), 18);
    }
}

TEST(RandomTables, TablesOfSeveralBlocksComeOutTheSameOnEveryRoad) {
    for (std::uint64_t seed = 5001; seed <= 5030 && !HasFailure(); ++seed) {
        Explore(seed, TableStyle::Anything, 1000 + static_cast<std::int32_t>(seed * 37 % 2000), 12);
    }
}

TEST(RandomTables, TablesWithMoreValuesThanARecordKeepsComeOutTheSameOnEveryRoad) {
    for (std::uint64_t seed = 7001; seed <= 7016 && !HasFailure(); ++seed) {
        Explore(seed, TableStyle::ManyValues, 2700 + static_cast<std::int32_t>(seed * 113 % 800), 8);
    }
}

TEST(RandomTables, ACancelAtAnyCaseComesOutTheSameOnEveryRoad) {
    for (const Operation::Verb verb :
         {Operation::Choose, Operation::Review, Operation::ReadAfterDrill, Operation::ReadBeforeDrill, Operation::Down,
          Operation::Up, Operation::FillNeatIntervals, Operation::FillContinuousIntervals}) {
        for (std::uint64_t seed = 9001; seed <= 9012 && !HasFailure(); ++seed) {
            CancelEverywhere(seed, verb);
        }
    }
}

}  // namespace drilltest
