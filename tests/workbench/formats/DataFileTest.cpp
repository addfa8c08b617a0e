#include "tests/Locations.h"
#include "workbench/formats/DataFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <thread>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

std::string Written(const DataTable& table) {
    const TemporaryFolder folder;
    WriteDataFile(table, folder.Path("out.CSV"));
    return ContentOf(folder.Path("out.CSV"));
}

DataTable Read(const std::string& text) {
    const TemporaryFolder folder;
    return ReadDataFile(folder.Put("in.csv", text));
}

TEST(DataFile, CsvComesBackAsItWas) {
    for (const std::string text : {"n,\"a,b\",date,\"q\"\"\"\n"
                                   "0.1,x,2024-02-29,\"1;\"\"2\"\n"
                                   ",,,\n"
                                   "-12345678.9,é,1969-12-31,\"two\nlines\"\n"
                                   "1e+300,z,0001-01-01,w\n",
                                   "a\n\"1;x\"\n\n2\n"}) {
        EXPECT_EQ(Written(Read(text)), text);
    }
    EXPECT_THROW(WriteDataFile({}, "out.sav"), DataError);
}

TEST(DataFile, LabelsAreWrittenWhenEachValueHasItsOwn) {
    DataTable table = Read("a,t\n1,f\n2,m\n,f\n");
    table.Variables[0].Labels = {{1, {"one", ""}}, {2, {"two, too", ""}}};
    table.Variables[1].Labels = {{1, {"Female", ""}}};
    EXPECT_EQ(Written(table), "a,t\none,Female\n\"two, too\",m\n,Female\n");
    table.Variables[0].Labels.erase(2);
    table.Variables[1].Labels[2].Label = "Female";
    EXPECT_EQ(Written(table), "a,t\n1,f\n2,m\n,f\n");
}

TEST(DataFile, ContentMustBeWhatTheNameSays) {
    const TemporaryFolder folder;
    const std::pair<std::string, std::string> cases[] = {
        {folder.Put("a.csv", "$FL2@(#) ..."),
         " isn't what its name says: it holds a sav file; rename it to \"a.sav\"."},
        {folder.Put("b.sav", "PK\x03\x04 ..."), " is a zip archive, which can't be read; unpack it first."},
        {folder.Put("z.xlsx", "PK\x03\x04 ..."), " can't be read; it is damaged or cut short."},
        {folder.Put("z", "PK\x03\x04 mimetypeapplication/vnd.oasis.opendocument.spreadsheet"),
         " can't be read; it is damaged or cut short."},
        {folder.Put("z.csv.gz", "a,b\n1,2\n"), " can't be read; it is damaged or cut short."},
        {folder.Put("z.db", "a,b\n1,2\n"), " is no SQLite database."},
        {folder.Put("z.csv", "\x1F\x8B\x08"), " isn't what its name says: it holds a gz file; rename it to \"z.gz\"."},
        {folder.Put("z.json", "[1, 2]"), " is a JSON file, which can't be read; save it as csv."},
        {folder.Path("none.csv"), " can't be read: No such file or directory."},
        {folder.Path(""), " can't be read: Is a directory."},
    };
    for (const auto& [path, message] : cases) {
        EXPECT_EQ(ShowFile(path), "\"@\"" + message);
    }
    std::filesystem::copy(testing_locations::Sample("survey.sav"), folder.Path("survey"));
    EXPECT_EQ(ReadDataFile(folder.Path("survey")).Cases, 2000);
    for (const char* extension : {"sav", "zsav", "por", "dta", "sas7bdat", "xpt"}) {
        const std::string shown = ShowFile(folder.Put(std::string("t.") + extension, "a,b\n1,2\n"));
        EXPECT_EQ(shown.find("\"@\" can't be read; it is damaged"), 0U) << shown;
    }
}

TEST(DataFile, BothFilesOfTheSurveyHoldTheSameCases) {
    const std::string survey = testing_locations::Sample("survey");
    const TemporaryFolder folder;
    const DataTable sav = ReadDataFile(survey + ".sav");
    ASSERT_EQ(sav.Cases, 2000);
    WriteDataFile(sav, folder.Path("survey.csv"));
    EXPECT_EQ(ContentOf(folder.Path("survey.csv")), ContentOf(survey + ".csv"));
    EXPECT_NE(sav.Header.find("our own generator"), std::string::npos);
    ASSERT_EQ(sav.Weight, sav.IndexOf("weight"));
    const Column& weights = sav.Variables[*sav.Weight].Values;
    EXPECT_NEAR(std::accumulate(weights.begin(), weights.end(), 0.0), 2000, 0.5);
}

TEST(DataFile, ReadingAndWritingTellTheirProgressAndCanBeEnded) {
    const TemporaryFolder folder;
    std::string text = "a,b\n";
    for (int i = 0; i < 100000; ++i) {
        text += std::to_string(i) + ",2024-02-29\n";
    }
    for (const std::string& path : {folder.Put("long.csv", text), testing_locations::Sample("survey.sav")}) {
        std::vector<double> shares;
        const auto take = [&](double share) { shares.push_back(share); };
        const DataTable table = ReadDataFile(path, {.Progress = take});
        EXPECT_TRUE(std::ranges::is_sorted(shares)) << path;
        EXPECT_EQ(shares.back(), 1) << path;
        EXPECT_THROW((void)ReadDataFile(path, {.Cancelled = [] { return true; }}), Interrupted) << path;
        for (const char* copy : {"copy.csv", "copy.sav"}) {
            shares.clear();
            WriteDataFile(table, folder.Path(copy), {}, take);
            EXPECT_TRUE(std::ranges::is_sorted(shares)) << path << copy;
            EXPECT_TRUE(shares.back() >= 0.9 && shares.back() <= 1) << path << copy << shares.back();
        }
    }
}

// Cut short at some time from before the reading to after it: the table is the one before or the one behind it.
TEST(DataFile, OfAFileThatIsCutShortOneStateIsRead) {
    constexpr std::size_t records = 60000;
    const auto textOf = [](std::size_t count) {
        std::string text = "a,b\n";
        for (std::size_t i = 0; i < count; ++i) {
            text += std::to_string(1000000 + i) + ",\"text " + std::to_string(i % 5) + "\"\n";
        }
        return text;
    };
    const std::string whole = textOf(records);
    const TemporaryFolder folder;
    std::mt19937_64 chance(5);
    for (int round = 0; round < 60; ++round) {
        const std::string path = folder.Put("t.csv", whole);
        const std::size_t others = chance() % records;
        const std::size_t shorter = textOf(others).size();
        const std::chrono::microseconds pause(chance() % 8000);
        std::thread writer([&] {
            std::this_thread::sleep_for(pause);
            std::filesystem::resize_file(path, shorter);
        });
        const DataTable table = ReadDataFile(path, {.Threads = 2});
        writer.join();
        const auto cases = static_cast<std::size_t>(table.Cases);
        EXPECT_TRUE(cases == records || cases == others) << cases << " of " << others;
        for (std::size_t row = 0; row < cases; ++row) {
            ASSERT_EQ(table.Variables[0].Values[row], static_cast<double>(1000000 + row));
        }
    }
}

TEST(DataFile, OfAPipeTheBytesAreTold) {
    const TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string piece(10000, '\n');
    std::thread writer([&] {
        std::ofstream file(pipe);
        for (int i = 0; i < 4; ++i) {
            file << piece << std::flush;
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
        }
        file << "a\n1\n";
    });
    std::vector<std::size_t> told;
    EXPECT_EQ(ReadDataFile(pipe, {.Received = [&](std::size_t bytes) { told.push_back(bytes); }}).Cases, 1);
    writer.join();
    EXPECT_TRUE(!told.empty() && std::ranges::is_sorted(told));
    EXPECT_TRUE(told.empty() || (told.front() >= piece.size() && told.back() <= 4 * piece.size() + 4));
}

TEST(FileFormats, TheReadmeHasTheirTable) {
    EXPECT_NE(ContentOf(testing_locations::Sample("../README.md")).find(FormatTable()), std::string::npos)
        << FormatTable();
    EXPECT_EQ(ReadFormats(),
              "csv and other delimited text, sav, zsav, por, dta, sas7bdat, xpt, qtable, gz, zst, "
              "xlsx, xlsm, ods, sqlite, sqlite3, db, parquet");
    EXPECT_EQ(WrittenFormats(), "csv, sav, zsav, dta, qtable or xlsx");
}

TEST(FileReplacement, KeepsLinksAndPermissionsAndOnFailureAllFiles) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("a.csv", "old");
    std::filesystem::permissions(path, std::filesystem::perms{0640});
    std::filesystem::create_symlink(path, folder.Path("link.csv"));
    EXPECT_THROW(ReplaceFile(folder.Path("link.csv"), "new", [] { return true; }), Interrupted);
    EXPECT_EQ(ContentOf(path), "old");
    ReplaceFile(folder.Path("link.csv"), "new");
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.csv")));
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms{0640});
    for (const std::string& nowhere : {folder.Path("none/a.csv"), folder.Path(""), std::string("/dev/full")}) {
        EXPECT_THROW(ReplaceFile(nowhere, "new"), DataError) << nowhere;
    }
    std::filesystem::create_symlink("later.csv", folder.Path("ahead.csv"));
    ReplaceFile(folder.Path("ahead.csv"), "new");
    EXPECT_EQ(ContentOf(folder.Path("later.csv")), "new");
    EXPECT_EQ(folder.Files(), 4U);
}

}  // namespace
}  // namespace quillara
