// Reading delimited text beside a floor of two threads that know what the fields are, in turns. The counters are the
// median time of reading divided by that of the floor: "elapsed" on two threads both, "processor" by processor time.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

#include "bench/LoadFloor.h"
#include "bench/Times.h"
#include "workbench/formats/DataFile.h"

namespace {

constexpr std::size_t Columns = 12;

/// The fields of a column: as many distinct texts, digits behind the point or years as its place says.
std::string FieldOf(LoadKind kind, std::size_t column, std::mt19937_64& chance) {
    constexpr std::array<unsigned, 6> distinct = {2, 5, 9, 16, 42, 500};
    std::array<char, 64> field{};
    const std::uint64_t number = chance();
    switch (kind) {
        case LoadKind::Numbers:
            std::snprintf(field.data(), field.size(), "%.*f", static_cast<int>(column % 6),
                          static_cast<double>(number % 100000000) / 1e4 - 2000);
            break;
        case LoadKind::Texts:
            std::snprintf(field.data(), field.size(), "category %u",
                          static_cast<unsigned>(number % distinct[column % 6]));
            break;
        case LoadKind::QuotedTexts:
            std::snprintf(field.data(), field.size(), "\"category %u, say \"\"%c\"\"\"",
                          static_cast<unsigned>(number % distinct[column % 6]), static_cast<char>('a' + number % 2));
            break;
        case LoadKind::Dates:
            std::snprintf(field.data(), field.size(), "%04u-%02u-%02u", 1950 + static_cast<unsigned>(number >> 32) % 70,
                          1 + static_cast<unsigned>(number >> 8) % 12, 1 + static_cast<unsigned>(number) % 28);
            break;
    }
    return chance() % 100 < 3 ? "" : field.data();
}

/// A file of so many records, made once, that goes with the program.
class LoadFile {
  public:
    LoadFile(LoadKind kind, std::size_t records)
        : Path(std::filesystem::temp_directory_path() / ("quillara-load-" + std::to_string(getpid()) + ".csv")) {
        std::ofstream file(Path);
        std::mt19937_64 chance(1);
        for (std::size_t i = 0; i < Columns; ++i) {
            file << (i == 0 ? "v" : ",v") << i;
        }
        for (std::size_t record = 0; record < records; ++record) {
            for (std::size_t i = 0; i < Columns; ++i) {
                file << (i == 0 ? '\n' : ',') << FieldOf(kind, i, chance);
            }
        }
        file << '\n';
    }
    LoadFile(const LoadFile&) = delete;
    LoadFile& operator=(const LoadFile&) = delete;
    ~LoadFile() { std::filesystem::remove(Path); }

    [[nodiscard]] const std::string& Name() const { return Path.native(); }

  private:
    std::filesystem::path Path;
};

void LoadDelimited(benchmark::State& state) {
    const auto kind = static_cast<LoadKind>(state.range(0));
    const auto records = static_cast<std::size_t>(state.range(1));
    const LoadFile file(kind, records);
    Times own;
    Times floor;
    Times ownProcessor;
    Times floorProcessor;
    for (auto round : state) {
        (void)round;
        std::size_t floorRecords = 0;
        std::int32_t cases = 0;
        floorProcessor.Add(SecondsOf(Clock::Processor, [&] {
            floor.Add(SecondsOf(Clock::Elapsed, [&] { floorRecords = RunLoadFloor(file.Name(), kind, Columns); }));
        }));
        double seconds = 0;
        ownProcessor.Add(SecondsOf(Clock::Processor, [&] {
            seconds =
                SecondsOf(Clock::Elapsed, [&] { cases = quillara::ReadDataFile(file.Name(), {.Threads = 2}).Cases; });
        }));
        if (floorRecords != records || static_cast<std::size_t>(cases) != records) {
            throw std::logic_error("A road reads other records.");
        }
        own.Add(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["elapsed"] = own.Median() / floor.Median();
    state.counters["processor"] = ownProcessor.Median() / floorProcessor.Median();
}

BENCHMARK(LoadDelimited)
    ->ArgNames({"kind", "records"})
    ->ArgsProduct({{0, 1, 2, 3}, {1000000}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(9);

}  // namespace
