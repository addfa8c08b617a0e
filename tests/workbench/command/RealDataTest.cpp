#include <cstdlib>

#include <gtest/gtest.h>

#include "Program.h"

namespace {

/// Drills on a file of the folder of real data that the environment names.
class RealData : public testing::Test {
  protected:
    void SetUp() override {
        if (std::getenv("QUILLARA_TEST_DATA") == nullptr) {
            GTEST_SKIP() << "QUILLARA_TEST_DATA is not set";
        }
    }

    nlohmann::json Drill(const std::string& file, const std::string& options) {
        std::vector<std::string> arguments = {"drill", std::getenv("QUILLARA_TEST_DATA") + ("/" + file), "--format",
                                              "json"};
        for (const std::string& word : Words(options)) {
            arguments.push_back(word);
        }
        const Outcome outcome = Quillara(arguments);
        EXPECT_EQ(outcome.Status, 0) << outcome.Errors;
        return nlohmann::json::parse(outcome.Out);
    }

    static double Count(const nlohmann::json& document, const std::string& row) {
        for (const nlohmann::json& candidate : document.at("rows")) {
            if (candidate.at("name") == row) {
                return candidate.at("cells").at(0);
            }
        }
        return -1;
    }
};

TEST_F(RealData, EveryFrequencyTableHoldsAllSelectedCases) {
    const nlohmann::json json = Drill("adult.csv", "--down sex=Female --show frequencies");
    ASSERT_EQ(json.at("documents").size(), 14U);
    for (const nlohmann::json& document : json.at("documents")) {
        EXPECT_NE(document.at("title").at(1).get<std::string>().find("N Total: 32561"), std::string::npos);
        double sum = 0;
        for (const nlohmann::json& row : document.at("rows")) {
            sum += row.at("cells").at(0).get<double>();
        }
        EXPECT_EQ(sum, 10771) << document.at("title");
    }
}

TEST_F(RealData, FractionalWeightsCountAsTheyAre) {
    const nlohmann::json json =
        Drill("adult.sav", "--categorical sex --weight fnlwgt --weighted-moments --show frequencies");
    const nlohmann::json& document = json.at("documents").at(0);
    EXPECT_NEAR(Count(document, "Female"), 10542.17, 0.005);
    EXPECT_NEAR(Count(document, "Male"), 22018.84, 0.005);
}

TEST_F(RealData, WeightsAreRoundedCaseByCaseAndOnlyInForceWhenAskedFor) {
    const nlohmann::json rounded = Drill("adult.sav", "--categorical sex --weight fnlwgt --show frequencies");
    const double female = Count(rounded.at("documents").at(0), "Female");
    EXPECT_EQ(female, std::floor(female));
    EXPECT_NE(female, 10542);
    const nlohmann::json unweighted = Drill("adult.sav", "--categorical sex --show frequencies");
    EXPECT_EQ(Count(unweighted.at("documents").at(0), "Female"), 10771);
}

}  // namespace
