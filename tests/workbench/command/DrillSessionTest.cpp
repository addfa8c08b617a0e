#include <gtest/gtest.h>

#include "Program.h"

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

struct Session {
    const char* Options;
    const char* Shown;  ///< InShort of the documents
};

class DrillSession : public testing::TestWithParam<Session> {
  protected:
    Folder Files;
    std::string Data = Files.Write("people.csv", People);
    std::string Dictionary = Files.Write("labels.csv", Labels);

    /// Runs a drill on the data; what it writes is JSON.
    Outcome Drill(const std::string& options) {
        std::vector<std::string> arguments = {"drill", Data, "--format", "json"};
        for (std::string word : Words(options)) {
            arguments.push_back(word == "DICTIONARY" ? Dictionary : word);
        }
        return Quillara(arguments);
    }
};

TEST_P(DrillSession, Shows) {
    const Outcome outcome = Drill(GetParam().Options);
    ASSERT_EQ(outcome.Status, 0) << outcome.Errors;
    EXPECT_EQ(InShort(nlohmann::json::parse(outcome.Out)), GetParam().Shown) << GetParam().Options;
    EXPECT_EQ(outcome.Errors, "");
}

// clang-format off
constexpr Session Sessions[] = {
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
    {"--categorical sex --down sex=#2 --show summary", "9058.1@1 analysis: sex Missing"},
    {"--categorical sex --down sex=mALE --show summary", "9058.1@1 analysis: sex Male"},
    {"--categorical sex --down sex=missing --show summary", "9058.1@1 analysis: sex Missing"},
    {"--categorical city --down 'city=Rome, old' --show summary", "9058.1@1 analysis: city Rome, old"},
    {"--categorical wave --down wave=-5 --show summary", "9058.1@1 analysis: wave -5"},
    {"--categorical wave --down wave=1e0 --show summary", "9058.1@1 analysis: wave 1"},
    {"--continuous age --categorize age=bounds:30,50 --down age=30 --show summary", "9058.1@1 analysis: age x<=30"},
    {"--continuous age --categorize age=bounds:30,50 --down age=30.5 --show summary", "9058.1@1 analysis: age 30<x<=50"},
    {"--continuous age --categorize age=step:25@20 --down age=45 --show summary", "9058.1@1 analysis: age 45<=x<70"},

    // Categorizations: every method, the later of two, only where it is asked for
    {"--continuous age --categorize age=exact:2 --show frequencies", "9060.1@0 age: -5<x<=45 3, 45<x<=95 3"},
    {"--continuous age --categorize age=neat:2 --show frequencies", "9060.1@0 age: 0<x<=50 4, 50<x<=100 2"},
    {"--continuous age --categorize age=step:40 --show frequencies", "9060.1@0 age: 20<=x<60 4, 60<=x<100 2"},
    {"--continuous share --categorize share=integer --show frequencies", "9060.1@0 share: 1 3"},
    {"--continuous share --categorize share=distinct --show frequencies", "9060.1@0 share: 0.25 1, 0.5 1, 1 3, 2.5 1"},
    {"--continuous age --categorize age=bounds:60 --categorize age=bounds:30,50 --show frequencies", "9060.1@0 age: x<=30 2, 30<x<=50 2, 50<x 2"},
    {"--continuous age --categorize age=step:0 --show frequencies", "9060.1@0 age:"},

    // Selection, weight, missing data
    {"--categorical sex --select 'age > 30 and city = \"Oslo\"' --show frequencies", "9060.1@0 sex: Female 2, Male 1"},
    {"--categorical wave --select '[wave] = [wave]' --show frequencies", "9060.1@0 wave: -5 1, 1 3, 2 2"},
    {"--categorical sex --weight share --show frequencies", "9060.1@0 sex: Female 3, Male 4"},
    {"--categorical sex --weight share --weighted-moments --show frequencies", "9060.1@0 sex: Female 2.5, Male 3.5, Missing 0.25"},
    {"--categorical sex --weighted-moments --show frequencies", "9060.1@0 sex: Female 3, Male 2, Missing 1"},
    {"--categorical sex --no-count-missing --show frequencies", "9060.1@0 sex: Female 3, Male 2"},
    {"--review-categorical sex --no-count-missing --show review-frequencies", "9082.1@0 sex: Female 3, Male 2"},
    {"--categorical sex,city --casewise --show frequencies", "9060.1@0 sex: Female 3, Male 2, Missing 1 | 9060.2@0 city: Oslo 3, Rome, old 2, Missing 1"},

    // Labels of a dictionary: order of the values, texts for people
    {"--categorical wave --dictionary DICTIONARY --down wave=SECOND --show summary", "9058.1@1 analysis: wave second"},
    {"--categorical wave --dictionary DICTIONARY --show frequencies", "9060.1@0 survey: -5 1, first 3, second 2"},
    {"--categorical sex --dictionary DICTIONARY --show frequencies", "9060.1@0 sex: FEMALE LABEL 3, Male 2, Missing 1"},

    // Chosen by content: texts first, as categorical; names: quotes, blanks
    {"--down sex=Male --show summary", "9058.1@1 analysis: sex Male"},
    {"--missing Male,Oslo --down sex=Female --show summary", "9058.1@1 analysis: sex Female"},
    {"--categorical ' \"city\" , sex' --show frequencies", "9060.1@0 city: Oslo 3, Rome, old 3 | 9060.2@0 sex: Female 3, Male 2, Missing 1"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(All, DrillSession, testing::ValuesIn(Sessions));

TEST_F(DrillSession, TheDataAreTold) {
    const nlohmann::json json = nlohmann::json::parse(Drill("--categorical sex").Out);
    EXPECT_EQ(json.at("data"), (nlohmann::json{{"file", "people.csv"}, {"cases", 6}, {"variables", 5}}));
}

TEST_F(DrillSession, MessagesGoToStandardErrorAsOneLine) {
    const Outcome outcome = Drill("--continuous age --select 'age < 0' --show descriptives");
    EXPECT_EQ(outcome.Status, 0);
    EXPECT_EQ(outcome.Errors, "The number of cases is zero.\n");
}

TEST_F(DrillSession, EveryFormatShowsTheSameCategories) {
    for (const char* format : {"text", "csv", "html", "json"}) {
        const Outcome outcome = Quillara({"drill", Data, "--format", format, "--categorical", "city"});
        EXPECT_EQ(outcome.Status, 0) << format;
        EXPECT_NE(outcome.Out.find("Rome, old"), std::string::npos) << format;
    }
}

TEST_F(DrillSession, AnOutputFileIsWrittenWholeOrNotAtAll) {
    Files.Write("result.json", "before");
    EXPECT_EQ(Drill("--categorical sex --down sex=None --output " + Files.Path("result.json")).Status, 1);
    EXPECT_EQ(Files.Read("result.json"), "before");
    const Outcome outcome = Drill("--categorical sex --output " + Files.Path("result.json"));
    EXPECT_EQ(outcome.Out, "");
    EXPECT_EQ(Files.Read("result.json"), Drill("--categorical sex").Out);
    EXPECT_EQ(Files.Names().size(), 3U);
}

TEST_F(DrillSession, CtrlCLeavesNothingBehind) {
    std::string large = "group,number\n";
    for (long number = 0; number < 400'000; ++number) {
        large += std::to_string(number % 7) + "," + std::to_string(number * 7919 % 400'009) + "\n";
    }
    Data = Files.Write("large.csv", large);
    const std::string output = Files.Path("result.txt");
    for (const int milliseconds : {20, 60, 120, 180}) {
        const Outcome outcome = Quillara({"drill", Data, "--output", output, "--down", "group=1"}, milliseconds);
        if (outcome.Status != 0) {
            EXPECT_EQ(outcome.Status, 130) << milliseconds << outcome.Errors;
            EXPECT_EQ(outcome.Errors, "");
            EXPECT_EQ(Files.Read("result.txt"), "");
        }
        EXPECT_LE(Files.Names().size(), 4U);
    }
}

}  // namespace
