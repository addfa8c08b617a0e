// Reads damaged data files of every format: bits flipped, bytes set, blocks swapped, doubled and cut out, ends cut off.
// Each reading gives a whole table or one line of complaint. Anything else is a fault: its seed is printed and makes
// the same file again.
//   damaged-files SAMPLE.sav SECONDS [FIRST SEED [COUNT]]

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/workbench/formats/StatisticalMaker.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

using Random = std::mt19937_64;

constexpr std::uint64_t FilesPerProcess = 200;
constexpr unsigned SecondsPerFile = 60;
constexpr std::int32_t CasesKept = 40;

struct SoundFile {
    std::string Extension;
    std::string Bytes;
};

std::string BytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The formats that are only read: a file with numbers, texts and, where the format has them, labels.
SoundFile Foreign(const std::string& extension) {
    std::vector<double> numbers;
    std::vector<const char*> texts;
    for (int row = 0; row < CasesKept; ++row) {
        numbers.push_back(row % 7 * 1.25);
        texts.push_back(row % 3 == 0 ? "a text" : "another");
    }
    StatisticalMaker maker(extension);
    readstat_variable_t* number = maker.Number("NUMBER", numbers);
    maker.Text("TEXT", texts, 12);
    if (extension == "por") {
        readstat_label_double_value(maker.Labels(number, READSTAT_TYPE_DOUBLE), 1, "one");
    }
    return {extension, maker.Bytes()};
}

/// Numbers of which every third is missing for a reason.
Variable WithMissingValues(const std::string& name, const MissingReason& reason, std::int32_t cases) {
    MissingReasons missing;
    missing.Reasons = {reason};
    if (reason.Number) {
        missing.Ranges = {{*reason.Number, *reason.Number}, {-std::numeric_limits<double>::infinity(), 0}};
        std::ranges::reverse(missing.Ranges);
    }
    std::vector<double> values;
    ReasonPlaces places;
    for (std::int32_t row = 0; row < cases; ++row) {
        values.push_back(row % 3 == 0 ? std::numeric_limits<double>::quiet_NaN() : 1 + row);
        places.Append(row % 3 == 0 ? 1 : 0);
    }
    Variable variable;
    variable.Name = name;
    EncodeNumbers(variable, std::move(values));
    missing.Places = places.Finish(1);
    variable.Reasons = std::make_shared<const MissingReasons>(std::move(missing));
    return variable;
}

/// A sound file of each format, from the first cases of a sample.
std::vector<SoundFile> SoundFiles(const std::string& sample, const std::filesystem::path& folder) {
    DataTable table = ReadDataFile(sample);
    table.Cases = std::min(table.Cases, CasesKept);
    for (Variable& variable : table.Variables) {
        const std::vector<double> values(variable.Values.begin(), variable.Values.end());
        variable.Values = std::vector(values.begin(), values.begin() + table.Cases);
        variable.Reasons = nullptr;
    }
    if (!table.CaseNames.empty()) {
        table.CaseNames.resize(static_cast<std::size_t>(table.Cases));
    }
    table.Variables.push_back(WithMissingValues("codes", {.Number = 99, .Label = "Not stated"}, table.Cases));
    table.Variables.push_back(WithMissingValues("marks", {.Text = ".a", .Label = "Refused"}, table.Cases));
    std::vector<SoundFile> files = {Foreign("por"), Foreign("xpt"), Foreign("sas7bdat")};
    for (const char* const extension : {"sav", "zsav", "dta", "csv", "qtable", "xlsx"}) {
        const std::filesystem::path path = folder / (std::string("sound.") + extension);
        WriteDataFile(table, path);
        files.push_back({extension, BytesOf(path)});
    }
    return files;
}

std::size_t Below(std::size_t limit, Random& random) {
    return limit == 0 ? 0 : random() % limit;
}

/// One damage. Lengths and counts stand in few bytes, so whole words are set to values at the edges too.
void Damage(std::string& bytes, Random& random) {
    constexpr std::array<std::uint32_t, 8> edges = {0, 1, 0x7F, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFF};
    const std::size_t place = Below(bytes.size(), random);
    const std::size_t other = Below(bytes.size(), random);
    const std::size_t length =
        std::min({std::size_t{1} << Below(10, random), bytes.size() - place, bytes.size() - other});
    const std::string block = bytes.substr(other, length);
    switch (Below(7, random)) {
        case 0:
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << Below(8, random)));
            break;
        case 1:
            bytes[place] = static_cast<char>(random());
            break;
        case 2:
            for (std::size_t i = 0; i < 4 && place + i < bytes.size(); ++i) {
                bytes[place + i] = static_cast<char>(edges[other % edges.size()] >> (8 * i));
            }
            break;
        case 3:
            bytes.replace(other, length, bytes.substr(place, length)).replace(place, length, block);
            break;
        case 4:
            bytes.insert(place, block);
            break;
        case 5:
            bytes.erase(place, length);
            break;
        default:
            bytes.resize(Below(8, random) == 0 ? place : bytes.size());
    }
}

/// Throws std::logic_error unless all columns are whole and all texts are there.
void CheckWhole(const DataTable& table) {
    const auto cases = static_cast<std::size_t>(table.Cases);
    for (const Variable& variable : table.Variables) {
        bool isWhole = variable.Values.size() == cases;
        for (const double value : variable.Values) {
            isWhole = isWhole && (variable.Kind != ValueKind::Text || variable.IsMissing(value) ||
                                  (value >= 1 && value <= static_cast<double>(variable.Texts.size())));
        }
        if (variable.Reasons && !variable.Reasons->Places.empty()) {
            const std::vector<std::size_t> counts = variable.Reasons->Counts();
            isWhole = isWhole && std::accumulate(counts.begin(), counts.end(), std::size_t{0}) == cases;
        }
        if (!isWhole) {
            throw std::logic_error("a column that isn't whole");
        }
    }
    if (!table.CaseNames.empty() && table.CaseNames.size() != cases) {
        throw std::logic_error("case names for some cases only");
    }
}

/// Makes the file of one seed and reads it.
void Try(std::uint64_t seed, const std::vector<SoundFile>& files, const std::filesystem::path& folder) {
    Random random(seed);
    SoundFile file = files[Below(files.size(), random)];
    for (std::size_t damages = 1 + Below(6, random); damages > 0 && !file.Bytes.empty(); --damages) {
        Damage(file.Bytes, random);
    }
    const std::filesystem::path path = folder / ("damaged." + file.Extension);
    std::ofstream(path, std::ios::binary) << file.Bytes;
    alarm(SecondsPerFile);
    try {
        CheckWhole(ReadDataFile(path));
    } catch (const DataError& error) {
        if (*error.what() == '\0' || std::string(error.what()).find('\n') != std::string::npos) {
            throw std::logic_error(std::string("not one line: ") + error.what());
        }
    }
    alarm(0);
}

/// Tries some seeds in a process of their own; false when one was a fault, of which the end of the process tells.
bool TryInChild(std::uint64_t first, std::uint64_t count, const std::vector<SoundFile>& files,
                const std::filesystem::path& folder) {
    const pid_t child = fork();
    if (child == 0) {
        for (std::uint64_t seed = first; seed < first + count; ++seed) {
            try {
                Try(seed, files, folder);
            } catch (const std::exception& error) {
                std::fprintf(stderr, "seed %ju: %s\n", static_cast<std::uintmax_t>(seed), error.what());
                _exit(1);
            }
        }
        _exit(0);
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

int Run(const std::string& sample, double seconds, std::uint64_t seed, std::uint64_t most) {
    std::string name = (std::filesystem::temp_directory_path() / "quillara-faults-XXXXXX").string();
    const std::filesystem::path folder = mkdtemp(name.data());
    const std::vector<SoundFile> files = SoundFiles(sample, folder);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    std::uint64_t tried = 0;
    int faults = 0;
    for (; tried < most && faults < 10 && std::chrono::steady_clock::now() < end; tried += FilesPerProcess) {
        const std::uint64_t first = seed + tried;
        const std::uint64_t count = std::min(FilesPerProcess, most - tried);
        const bool isSound = TryInChild(first, count, files, folder);
        for (std::uint64_t one = first; !isSound && one < first + count; ++one) {
            if (!TryInChild(one, 1, files, folder)) {
                std::fprintf(stderr, "FAULT: damaged-files %s 60 %ju 1\n", sample.c_str(),
                             static_cast<std::uintmax_t>(one));
                ++faults;
            }
        }
    }
    std::filesystem::remove_all(folder);
    std::printf("%ju damaged files from seed %ju, %d faults\n", static_cast<std::uintmax_t>(std::min(tried, most)),
                static_cast<std::uintmax_t>(seed), faults);
    return faults == 0 ? 0 : 1;
}

}  // namespace
}  // namespace quillara

int main(int count, char** values) {
    if (count < 3) {
        std::fprintf(stderr, "usage: damaged-files SAMPLE.sav SECONDS [FIRST SEED [COUNT]]\n");
        return 2;
    }
    const std::uint64_t seed = count > 3 ? std::stoull(values[3]) : 1;
    const std::uint64_t most = count > 4 ? std::stoull(values[4]) : UINT64_MAX - seed;
    return quillara::Run(values[1], std::stod(values[2]), seed, most);
}
