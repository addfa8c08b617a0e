#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "tests/Locations.h"
#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/formats/ColumnFileReader.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

std::string BytesOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// So many reasons for every seventh or other case.
std::shared_ptr<const MissingReasons> ReasonsOfEvery(std::size_t step, std::size_t cases, std::size_t count) {
    MissingReasons reasons;
    reasons.Ranges = {{-Infinity, -1}, {99, 99}};
    for (std::size_t i = 0; i < count; ++i) {
        reasons.Reasons.push_back({.Number = 99.5 + static_cast<double>(i), .Label = i % 2 == 0 ? "Not stated" : ""});
    }
    reasons.Reasons.push_back({.Text = ".a"});
    ReasonPlaces places;
    for (std::size_t i = 0; i < cases; ++i) {
        places.Append(i % step == 0 ? i / step % (count + 2) : 0);
    }
    reasons.Places = places.Finish(count + 1);
    return std::make_shared<const MissingReasons>(std::move(reasons));
}

bool AreSame(const MissingReasons& left, const MissingReasons& right) {
    return left.Ranges == right.Ranges && left.Places == right.Places &&
           std::ranges::equal(left.Reasons, right.Reasons, [](const MissingReason& one, const MissingReason& other) {
               return one.IsSameValue(other) && one.Label == other.Label;
           });
}

/// Columns of all forms, with and without missing data, texts and labels.
DataTable TableOfAllForms(std::size_t cases) {
    std::vector<double> few, many, whole, parts, days;
    std::vector<std::optional<std::string>> texts, ids;
    for (std::size_t i = 0; i < cases; ++i) {
        const auto number = static_cast<double>(i);
        few.push_back(i % 7 == 0 ? Missing : number / 3 - std::floor(number / 9) * 3);
        many.push_back(static_cast<double>(i * 31 % 300));
        whole.push_back(number * 40 - 1e6);
        parts.push_back(i == 5 ? -0.0 : number * number / 7);
        days.push_back(static_cast<double>(i * 7919 % 20000));
        texts.push_back(i % 5 == 0 ? std::nullopt : std::optional(i % 2 == 0 ? "Zürich, \"x\"\n" : ""));
        ids.push_back("id " + std::to_string(i));
    }
    DataTable table = TableOf({Numbers("few", few), Numbers("many", many), Numbers("whole", whole),
                               Numbers("parts", parts), Numbers("days", days, ValueKind::Date), Texts("texts", texts),
                               Texts("ids", ids), Numbers("none", std::vector<double>(cases, Missing))});
    table.Header = "A title; with \"quotes\"";
    table.Weight = 1;
    table.Variables[1].LongName = "many = viele";
    table.Variables[1].Format = "F8.2";
    table.Variables[1].Labels = {{3, {"three", "a description"}}, {0.1, {"", "no label"}}, {-0.0, {"zero", ""}}};
    table.Variables[0].Reasons = ReasonsOfEvery(7, cases, 1);
    table.Variables[5].Reasons = ReasonsOfEvery(5, cases, 300);
    table.CaseNames.assign(cases, "");
    if (cases > 2) {
        table.CaseNames[2] = "the third";
    }
    return table;
}

void ExpectSame(const DataTable& table, const DataTable& read) {
    WorkMonitor monitor;
    ASSERT_EQ(table.Cases, read.Cases);
    EXPECT_EQ(table.Header, read.Header);
    EXPECT_EQ(table.Weight, read.Weight);
    EXPECT_EQ(table.CaseNames, read.CaseNames);
    ASSERT_EQ(table.Variables.size(), read.Variables.size());
    for (std::size_t i = 0; i < table.Variables.size(); ++i) {
        const Variable& variable = table.Variables[i];
        const Variable& other = read.Variables[i];
        EXPECT_TRUE(variable.Name == other.Name && variable.LongName == other.LongName && variable.Kind == other.Kind &&
                    variable.Format == other.Format && variable.MissingCode == other.MissingCode &&
                    variable.Texts == other.Texts)
            << variable.Name;
        EXPECT_TRUE(variable.Values == other.Values) << variable.Name;
        ASSERT_EQ(variable.Reasons == nullptr, other.Reasons == nullptr) << variable.Name;
        EXPECT_TRUE(variable.Reasons == nullptr || AreSame(*variable.Reasons, *other.Reasons)) << variable.Name;
        EXPECT_EQ(variable.Values.Stored().Form, other.Values.Stored().Form) << variable.Name;
        EXPECT_TRUE(std::ranges::equal(variable.Labels, other.Labels, [](const auto& left, const auto& right) {
            return left.first == right.first && left.second.Label == right.second.Label &&
                   left.second.Description == right.second.Description;
        })) << variable.Name;
    }
}

TEST(ColumnFile, KeepsEverything) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("t.qtable");
    for (const std::size_t cases : {0U, 1U, 2U, 100U, 5000U, 70000U}) {
        const DataTable table = TableOfAllForms(cases);
        WriteDataFile(table, path);
        ExpectSame(table, ReadDataFile(path));
        const DataTable unchecked = ReadDataFile(path, {.ChecksColumns = false});
        EXPECT_TRUE(std::ranges::equal(table.Variables, unchecked.Variables, {}, &Variable::Values, &Variable::Values));
    }
    for (const char* name : {"survey.sav"}) {
        const DataTable table = ReadDataFile(testing_locations::Sample(name));
        WriteDataFile(table, path);
        ExpectSame(table, ReadDataFile(path));
    }
}

TEST(ColumnFile, IsReadThroughAPipeAndUnderAnyName) {
    const TemporaryFolder folder;
    const DataTable table = TableOfAllForms(300);
    WriteDataFile(table, folder.Path("t.qtable"));
    std::filesystem::copy_file(folder.Path("t.qtable"), folder.Path("unnamed"));
    ExpectSame(table, ReadDataFile(folder.Path("unnamed")));
    const std::string pipe = folder.Path("pipe.qtable");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { WriteDataFile(table, pipe); });
    ExpectSame(table, ReadDataFile(pipe));
    writer.join();
}

/// What reading a file says: nothing when it gives a table, whose values are all looked at then.
std::string Complaint(const std::string& path, bool checksColumns) {
    try {
        DataTable table = ReadDataFile(path, {.Threads = 1, .ChecksColumns = checksColumns});
        for (std::size_t i = 0; i < table.Variables.size(); ++i) {
            const Variable& variable = table.Variables[i];
            for (const double value : variable.Values) {
                (void)variable.LabelOf(value);
            }
            (void)(variable.Reasons ? variable.Reasons->Counts() : std::vector<std::size_t>());
        }
        WorkMonitor monitor;
        CheckAllColumns(table, 1, monitor);
        return "";
    } catch (const DataError& error) {
        return error.what();
    }
}

TEST(ColumnFile, DamagedOrCutShortIsOneClearLine) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("t.qtable");
    WriteDataFile(TableOfAllForms(400), path);
    const std::string sound = BytesOfFile(path);
    const std::string begin = "\"" + path + "\" can't be read; it is damaged, cut short or no qtable file: ";
    const auto expectRefusal = [&](const std::string& bytes, const std::string& what) {
        folder.Put("t.qtable", bytes);
        for (const bool checksColumns : {true, false}) {
            const std::string complaint = Complaint(path, checksColumns);
            EXPECT_TRUE(complaint.starts_with(begin) && complaint.ends_with('.') &&
                        complaint.find('\n') == std::string::npos)
                << what << ": " << complaint;
        }
    };
    for (std::size_t length = 0; length < sound.size(); length += 64) {
        expectRefusal(sound.substr(0, length), "cut to " + std::to_string(length));
    }
    expectRefusal(sound + "x", "a byte more");
    for (std::size_t bit = 0; bit < 8 * sound.size(); bit += 29) {
        std::string bytes = sound;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
        expectRefusal(bytes, "bit " + std::to_string(bit));
    }
}

TEST(ColumnFile, CutShortInUseEndsTheProgramWithALine) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("t.qtable");
    WriteDataFile(TableOfAllForms(70000), path);
    int lines[2];
    ASSERT_EQ(pipe(lines), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(lines[1], STDERR_FILENO);
        std::signal(SIGBUS, SIG_DFL);  // a sanitizer would keep it
        const DataTable table = ReadDataFile(path, {.ChecksColumns = false});
        std::filesystem::resize_file(path, 4096);
        double sum = 0;
        for (const double value : table.Variables[3].Values) {
            sum += value;
        }
        _exit(sum == 0 ? 3 : 2);
    }
    close(lines[1]);
    char line[4096] = {};
    EXPECT_GT(read(lines[0], line, sizeof(line) - 1), 0);
    close(lines[0]);
    EXPECT_EQ(line, "quillara: \"" + path + "\" was cut short while it was in use.\n");
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
}

}  // namespace
}  // namespace quillara
