#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <numeric>

#include "tests/workbench/command/Program.h"

namespace {

constexpr const char* People = "sex,age\nFemale,20\nMale,30\n,60\n";

/// Drills on the data; what they write is JSON.
struct DrillSession : testing::Test {
    DrillSession() { Folder.Put("people.csv", People); }
    Outcome Drill(const std::string& options, const std::string& before = "") {
        return Quillara(Folder, "drill people.csv --format json " + options, before);
    }
    const TemporaryFolder Folder;
};

TEST_F(DrillSession, AnOutputFileIsWrittenWholeOrNotAtAll) {
    const std::string path = Folder.Put("result.json", "before");
    EXPECT_EQ(Drill("--categorical sex --down sex=None --output result.json").Status, 1);
    const std::string fullDisk = "trap '' XFSZ; ulimit -f 1;";
    EXPECT_EQ(Drill("--show frequencies --output result.json", fullDisk).Status, 1);
    EXPECT_EQ(ContentOf(path), "before");
    EXPECT_EQ(Drill("--categorical sex --output result.json").Out, "");
    EXPECT_EQ(ContentOf(path), Drill("--categorical sex").Out);
    EXPECT_EQ(Folder.Files(), 2U);
}

/// What sends Ctrl-C to the program that stands behind it.
std::string InterruptAfter(int milliseconds) {
    return "timeout --foreground --preserve-status -s INT " + std::to_string(milliseconds / 1000.0);
}

TEST_F(DrillSession, CtrlCLeavesNothingOrAllIsDone) {
    std::string large = "group,number\n";
    for (long number = 0; number < 200'000; ++number) {
        large += std::to_string(number % 7) + "," + std::to_string(number * 7919 % 400'009) + "\n";
    }
    Folder.Put("people.csv", large);
    const std::string drill = "--down group=1 --output result.json";
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(Drill(drill).Status, 0);
    const std::chrono::duration<double, std::milli> whole = std::chrono::steady_clock::now() - start;
    const std::string path = Folder.Path("result.json");
    const std::string result = ContentOf(path);
    for (int part = 1; part <= 12; ++part) {
        Folder.Put("result.json", "before");
        const Outcome outcome = Drill(drill, InterruptAfter(static_cast<int>(whole.count() * part / 10)));
        EXPECT_TRUE(outcome.Status == 0 || outcome.Status == 130) << outcome.Status;
        EXPECT_TRUE(ContentOf(path) == (outcome.Status == 0 ? result : "before")) << part << ": " << outcome.Status;
        EXPECT_EQ(outcome.Out + outcome.Errors, "");
        EXPECT_EQ(Folder.Files(), 2U) << part;
    }
}

TEST_F(DrillSession, CtrlCEndsWaiting) {
    for (const std::string line : {"drill people.csv --output pipe", "drill people.csv --save pipe.csv", "info pipe",
                                   "convert people.csv pipe.csv"}) {
        const TemporaryFolder folder;
        folder.Put("people.csv", People);
        const Outcome outcome = Quillara(folder, line, "mkfifo pipe pipe.csv;" + InterruptAfter(100));
        EXPECT_EQ(outcome.Status, 130) << line;
        EXPECT_EQ(folder.Files(), 3U);
    }
}

/// The documents of a drill on a file of real data.
nlohmann::json RealDocuments(const std::string& file, const std::string& options) {
    const TemporaryFolder folder;
    const Outcome outcome = Quillara(folder, "drill " + RealData::File(file) + " --format json " + options);
    EXPECT_EQ(outcome.Status, 0) << outcome.Errors;
    return nlohmann::json::parse(outcome.Out)["documents"];
}

/// The first cells of a document's rows.
std::vector<double> Counts(const nlohmann::json& document) {
    std::vector<double> counts;
    for (const nlohmann::json& row : document["rows"]) {
        counts.push_back(row["cells"][0]);
    }
    return counts;
}

TEST_F(RealData, EveryFrequencyTableHoldsAllSelectedCases) {
    const nlohmann::json documents = RealDocuments("adult.csv", "--down sex=Female --show frequencies");
    ASSERT_EQ(documents.size(), 14U);
    for (const nlohmann::json& document : documents) {
        EXPECT_NE(document["title"].dump().find("N Total: 32561"), std::string::npos);
        const std::vector<double> counts = Counts(document);
        EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0.0), 10771) << document["title"];
    }
}

TEST_F(RealData, WeightsCountAsTheyAreOrRoundedOrNotAtAll) {
    const auto female = [](const std::string& options) {
        return Counts(RealDocuments("adult.sav", "--categorical sex --show frequencies " + options)[0])[0];
    };
    EXPECT_NEAR(female("--weight fnlwgt --weighted-moments"), 10542.17, 0.005);
    const double rounded = female("--weight fnlwgt");
    EXPECT_TRUE(rounded == std::floor(rounded) && rounded != 10542);  // case by case
    EXPECT_EQ(female(""), 10771);
}

}  // namespace
