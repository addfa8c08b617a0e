#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "tests/workbench/command/Program.h"

namespace {

constexpr const char* People = "sex,age\nFemale,20\nMale,30\n,60\n";

TEST(DrillSession, CtrlCEndsWaiting) {
    for (const std::string line : {"drill people.csv --output pipe", "drill people.csv --save pipe.csv", "info pipe",
                                   "convert people.csv pipe.csv"}) {
        const TemporaryFolder folder;
        folder.Put("people.csv", People);
        const std::string interrupted = "mkfifo pipe pipe.csv; timeout --foreground --preserve-status -s INT 0.1";
        const Outcome outcome = Quillara(folder, line, interrupted);
        EXPECT_EQ(outcome.Status, 130) << line;
        EXPECT_EQ(folder.Files(), 3U);
    }
}

TEST(DrillSession, AnEmptySubsetIsNotSaved) {
    const TemporaryFolder folder;
    folder.Put("people.csv", People);
    const Outcome outcome = Quillara(folder, "drill people.csv --categorical sex --select 'age > 90' --save new.csv");
    EXPECT_EQ(outcome.Status, 1);
    EXPECT_EQ(outcome.Out, "");
    EXPECT_EQ(outcome.Errors,
              "The number of cases is zero.\n"
              "quillara: Nothing was saved to \"new.csv\": no case is left.\n");
    EXPECT_EQ(folder.Files(), 1U);
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
