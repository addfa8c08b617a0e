#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "tests/workbench/command/Program.h"

namespace {

// sex: Female 3, Male 2, 1 missing; city: Oslo 3, "Rome, old" 3; age 20 to 70; wave 1 and 2, labelled by the
// dictionary.
constexpr const char* People =
    "sex,age,city,wave,share\n"
    "Female,20,\"Rome, old\",1,0.5\n"
    "Male,30,\"Rome, old\",1,2.5\n"
    "Female,40,Oslo,2,1\n"
    "Male,50,Oslo,2,1\n"
    ",60,\"Rome, old\",1,0.25\n"
    "Female,70,Oslo,-5,1\n";

constexpr const char* Labels =
    "label,variable,description,value\n"
    "first,wave,,1\n"
    "second,wave,the second wave of the survey,2\n"
    "FEMALE LABEL,sex,,Female\n"
    "Wave of the survey,wave,,\n"
    "not there,city,,Bergen\n";

/// Drills on the data; what they write is JSON.
struct DrillSession : testing::Test {
    DrillSession() {
        Folder.Put("people.csv", People);
        Folder.Put("labels.csv", Labels);
    }
    Outcome Drill(const std::string& options, const std::string& before = "") {
        return Quillara(Folder, "drill people.csv --format json " + options, before);
    }
    const TemporaryFolder Folder;
};

/// Options of a drill, and its documents in short.
// clang-format off
constexpr std::pair<const char*, const char*> Sessions[] = {
    // Order and numbers of documents, and which results apply
    {"--categorical sex,city --show frequencies", "9060.1@0 sex: Female 3, Male 2, Missing 1 | 9060.2@0 city: Oslo 3, Rome, old 3"},
    {"--categorical sex --show descriptives,summary,review-frequencies,review-descriptives", ""},
    {"--categorical city,sex --down sex=Male --show frequencies,summary", "9060.1@1 city: Oslo 1, Rome, old 1 | 9058.1@1 analysis: sex Male"},
    {"--categorical sex --continuous age --down sex=Female --show descriptives", "9059.1@1 statistics: age 43.333333333333336"},
    {"--categorical sex --continuous age --down sex=Missing --show descriptives", ""},
    {"--categorical sex --review-categorical city --down sex=Missing --show review-frequencies", "9082.1@1 city: Rome, old 1"},
    {"--review-categorical sex --review-continuous age --show review-descriptives", "9081.1@0 statistics: age 45"},

    // Steps in the order given, whichever options they are
    {"--categorical sex,city --down sex=Male --down city=Oslo --up sex --show frequencies", "9060.1@3 sex: Female 2, Male 1"},
    {"--categorical sex,city --down sex=Male --up sex --down sex=Female --show summary --after each", "9058.1@1 analysis: sex Male | 9058.1@3 analysis: sex Female"},
    {"--categorical sex,city --show frequencies --after each", "9060.1@0 sex: Female 3, Male 2, Missing 1 | 9060.2@0 city: Oslo 3, Rome, old 3"},

    // Categories by name, number of the row, letters of any case, decimal number
    {"--categorical sex --down sex=#0 --show summary", "9058.1@1 analysis: sex Female"},
    {"--categorical sex --down sex=mALE --show summary", "9058.1@1 analysis: sex Male"},
    {"--categorical city --down 'city=Rome, old' --show summary", "9058.1@1 analysis: city Rome, old"},
    {"--categorical wave --down wave=-5 --show summary", "9058.1@1 analysis: wave -5"},
    {"--continuous age --categorize age=bounds:30,50 --down age=30.5 --show summary", "9058.1@1 analysis: age 30<x<=50"},
    {"--continuous age --categorize age=step:25@20 --down age=45 --show summary", "9058.1@1 analysis: age 45<=x<70"},

    // Categorizations: every method, the later of two, only where it is asked for
    {"--continuous age --categorize age=exact:2 --show frequencies", "9060.1@0 age: -5<x<=45 3, 45<x<=95 3"},
    {"--continuous age --categorize age=neat:2 --show frequencies", "9060.1@0 age: 0<x<=50 4, 50<x<=100 2"},
    {"--continuous age --categorize age=step:40 --show frequencies", "9060.1@0 age: 20<=x<60 4, 60<=x<100 2"},
    {"--continuous share --categorize share=integer --show frequencies", "9060.1@0 share: 1 3"},
    {"--continuous share --categorize share=distinct --show frequencies", "9060.1@0 share: 0.25 1, 0.5 1, 1 3, 2.5 1"},
    {"--continuous age --categorize age=bounds:60 --categorize age=bounds:30,50 --show frequencies", "9060.1@0 age: x<=30 2, 30<x<=50 2, 50<x 2"},

    // Selection, weight, missing data
    {"--categorical sex --select 'age > 30 and city = \"Oslo\"' --show frequencies", "9060.1@0 sex: Female 2, Male 1"},
    {"--categorical wave --select '[wave] = [wave]' --show frequencies", "9060.1@0 wave: -5 1, 1 3, 2 2"},
    {"--categorical sex --weight share --show frequencies", "9060.1@0 sex: Female 3, Male 4"},
    {"--categorical sex --weight share --weighted-moments --show frequencies", "9060.1@0 sex: Female 2.5, Male 3.5, Missing 0.25"},
    {"--categorical sex --no-count-missing --show frequencies", "9060.1@0 sex: Female 3, Male 2"},
    {"--categorical sex,city --casewise --show frequencies", "9060.1@0 sex: Female 3, Male 2, Missing 1 | 9060.2@0 city: Oslo 3, Rome, old 2, Missing 1"},

    // Labels of a dictionary: order of the values, texts for people
    {"--categorical wave --dictionary labels.csv --down wave=SECOND --show summary", "9058.1@1 analysis: wave second"},
    {"--categorical wave --dictionary labels.csv --show frequencies", "9060.1@0 survey: -5 1, first 3, second 2"},
    {"--categorical sex --dictionary labels.csv --show frequencies", "9060.1@0 sex: FEMALE LABEL 3, Male 2, Missing 1"},

    // Chosen by content: texts first, as categorical; names: quotes, blanks
    {"--down sex=Male --show summary", "9058.1@1 analysis: sex Male"},
    {"--missing Male,Oslo --down sex=Female --show summary", "9058.1@1 analysis: sex Female"},
    {"--categorical ' \"city\" , sex' --show frequencies", "9060.1@0 city: Oslo 3, Rome, old 3 | 9060.2@0 sex: Female 3, Male 2, Missing 1"},
};
// clang-format on

TEST_F(DrillSession, Shows) {
    for (const auto& [options, documents] : Sessions) {
        const Outcome outcome = Drill(options);
        ASSERT_EQ(outcome.Status, 0) << options << outcome.Errors;
        EXPECT_EQ(outcome.Errors, "") << options;
        const nlohmann::json json = nlohmann::json::parse(outcome.Out);
        EXPECT_EQ(json["data"], (nlohmann::json{{"file", "people.csv"}, {"cases", 6}, {"variables", 5}}));
        std::string shown;
        for (const nlohmann::json& document : json["documents"]) {
            shown += (shown.empty() ? "" : " | ") + InShort(document);
        }
        EXPECT_EQ(shown, documents) << options;
    }
}

TEST_F(DrillSession, MessagesGoToStandardErrorAsOneLine) {
    const Outcome outcome = Drill("--continuous age --select 'age < 0' --show descriptives");
    EXPECT_EQ(outcome.Status, 0);
    EXPECT_EQ(outcome.Errors, "The number of cases is zero.\n");
}

TEST_F(DrillSession, EveryFormatShowsTheSameCategories) {
    for (const std::string format : {"text", "csv", "html", "json"}) {
        const Outcome outcome = Quillara(Folder, "drill people.csv --categorical city --format " + format);
        EXPECT_NE(outcome.Out.find("Rome, old"), std::string::npos) << format;
    }
}

TEST_F(DrillSession, AnOutputFileIsWrittenWholeOrNotAtAll) {
    const std::string path = Folder.Put("result.json", "before");
    EXPECT_EQ(Drill("--categorical sex --down sex=None --output result.json").Status, 1);
    const std::string fullDisk = "trap '' XFSZ; ulimit -f 1;";
    EXPECT_EQ(Drill("--show frequencies --output result.json", fullDisk).Status, 1);
    EXPECT_EQ(ContentOf(path), "before");
    EXPECT_EQ(Drill("--categorical sex --output result.json").Out, "");
    EXPECT_EQ(ContentOf(path), Drill("--categorical sex").Out);
    EXPECT_EQ(Folder.Files(), 3U);
}

TEST_F(DrillSession, CtrlCLeavesNothingBehind) {
    std::string large = "group,number\n";
    for (long number = 0; number < 400'000; ++number) {
        large += std::to_string(number % 7) + "," + std::to_string(number * 7919 % 400'009) + "\n";
    }
    Folder.Put("people.csv", large);
    std::size_t files = Folder.Files();
    for (const int milliseconds : {20, 60, 120, 180}) {
        const std::string after = std::to_string(milliseconds);
        const Outcome outcome =
            Drill("--down group=1 --output after" + after,
                  "timeout --foreground --preserve-status -s INT " + std::to_string(milliseconds / 1000.0));
        const bool isDone = outcome.Status == 0 && milliseconds > 20;
        files += isDone ? 1 : 0;
        EXPECT_EQ(outcome.Status, isDone ? 0 : 130) << milliseconds;
        EXPECT_EQ(outcome.Out + outcome.Errors, "");
        EXPECT_EQ(Folder.Files(), files) << milliseconds;
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
