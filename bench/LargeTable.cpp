// large-bench [CASES [FILE]]: a drill step over a table of 100,000,000 cases or so many, three categorical and three
// continuous variables with 3 % missing data. A file that is there is opened in place of making the table, else the
// table is written to it.

#include <sys/resource.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "bench/DrillTable.h"
#include "bench/Times.h"
#include "workbench/formats/ColumnFileReader.h"
#include "workbench/formats/DataFile.h"

using quillara::DataTable;

namespace {

constexpr short Categorical = 3;
constexpr short Continuous = 3;
constexpr int Categories[Categorical] = {2, 9, 42};
constexpr int Rounds = 5;

/// A share of 0 .. 1.
double Share(std::uint64_t bits) {
    return static_cast<double>(bits >> 11U) * 0x1p-53;
}

/// Quick to draw (Blackman, Vigna, "Scrambled linear pseudorandom number generators", ACM TOMS 47:4, 2021:
/// xorshift64*).
class QuickRandom {
  public:
    explicit QuickRandom(std::uint64_t seed) : State(seed) {}
    std::uint64_t operator()() {
        State ^= State >> 12U;
        State ^= State << 25U;
        State ^= State >> 27U;
        return State * 0x2545F4914F6CDD1DULL;
    }

  private:
    std::uint64_t State;
};

template <typename Draw>
quillara::Variable MadeVariable(std::string name, std::int32_t cases, std::uint64_t seed, Draw draw) {
    QuickRandom random(seed);
    std::vector<double> values(static_cast<std::size_t>(cases));
    for (double& value : values) {
        const double share = Share(random());
        value = Share(random()) < 0.03 ? std::numeric_limits<double>::quiet_NaN() : draw(share);
    }
    quillara::Variable variable;
    variable.Name = std::move(name);
    EncodeNumbers(variable, std::move(values));
    return variable;
}

DataTable MakeTable(std::int32_t cases) {
    DataTable table;
    table.Cases = cases;
    std::uint64_t seed = 20240229;
    for (const int count : Categories) {
        table.Variables.push_back(MadeVariable("c" + std::to_string(count), cases, ++seed, [count](double share) {
            return 1.0 + std::floor(share * share * count);
        }));
    }
    for (int i = 0; i < Continuous; ++i) {
        table.Variables.push_back(MadeVariable("x" + std::to_string(i), cases, ++seed, [i](double share) {
            return std::exp(3.0 + i + share + share * share);
        }));
    }
    return table;
}

/// Columns are checked apart, as commands do with those that they use.
DataTable OpenedTable(const std::string& path) {
    const double start = SecondsOf(Clock::Elapsed);
    quillara::ReadOptions options;
    options.ChecksColumns = false;
    DataTable table = quillara::ReadDataFile(path, options);
    const double opened = SecondsOf(Clock::Elapsed);
    quillara::WorkMonitor monitor;
    CheckAllColumns(table, options.Threads, monitor);
    std::printf("opened in %.1f ms, checked in %.1f ms\n", 1e3 * (opened - start),
                1e3 * (SecondsOf(Clock::Elapsed) - opened));
    return table;
}

DataTable TableFor(std::int32_t cases, const std::string& path) {
    if (!path.empty() && std::filesystem::exists(path)) {
        return OpenedTable(path);
    }
    const double start = SecondsOf(Clock::Elapsed);
    DataTable table = MakeTable(cases);
    std::printf("made in %.1f s\n", SecondsOf(Clock::Elapsed) - start);
    if (!path.empty()) {
        const double begin = SecondsOf(Clock::Elapsed);
        quillara::WriteDataFile(table, path);
        std::printf("written in %.1f s\n", SecondsOf(Clock::Elapsed) - begin);
    }
    return table;
}

void RunSteps(const DataTable& table, int threads) {
    for (int steps = 0; steps <= 2; ++steps) {
        BenchAnalysis bench(table, Categorical, Continuous, {steps, false, true, threads});
        Times elapsed;
        Times processor;
        for (int round = 0; round < Rounds; ++round) {
            bench.Forget();
            const double start = SecondsOf(Clock::Processor);
            elapsed.Add(SecondsOf(Clock::Elapsed, [&] { bench.ReadBoth(); }));
            processor.Add(SecondsOf(Clock::Processor) - start);
        }
        std::printf("%d threads, %d steps in force: %.3f s, processor %.3f s\n", threads, steps, elapsed.Median(),
                    processor.Median());
    }
}

}  // namespace

int main(int count, char** arguments) {
    const std::int32_t cases = count > 1 ? std::atoi(arguments[1]) : 100'000'000;
    const DataTable table = TableFor(cases, count > 2 ? arguments[2] : "");
    for (const int threads : {1, 2}) {
        RunSteps(table, threads);
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("most memory: %.1f GB\n", static_cast<double>(usage.ru_maxrss) / 1048576.0);
    return 0;
}
