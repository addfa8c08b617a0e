#include <gtest/gtest.h>

#include "tests/workbench/command/Program.h"

namespace {

// Distances between stops of two lines; a missing line, a missing distance, a fractional weight.
constexpr const char* Stops =
    "line,day,km,weight,note\n"
    "A,2024-02-01,1.5,1,\"one, two\"\n"
    "B,2024-02-01,2.25,0.5,\"say \"\"x\"\"\"\n"
    "A,2024-02-03,,2,plain\n"
    ",2024-02-03,1e-7,1,plain\n"
    "A,2024-02-03,1.5,1.5,\n";

struct SavedSubset : testing::Test {
    SavedSubset() { Folder.Put("stops.csv", Stops); }
    Outcome Drill(const std::string& arguments) const {
        const std::string folder = arguments.starts_with("survey") ? testing_locations::Sample("") : "";
        return Quillara(Folder, "drill " + folder + arguments);
    }

    /// The frequency tables of a drill, without what tells of the steps: "Frequency table of line: A 2 66.6, B 1 33.3".
    [[nodiscard]] std::string Tables(const std::string& arguments) const {
        const Outcome outcome = Drill(arguments + " --format json --show frequencies");
        EXPECT_EQ(outcome.Status, 0) << arguments << "\n" << outcome.Errors;
        std::string text;
        const nlohmann::json json = nlohmann::json::parse(outcome.Out);
        for (const nlohmann::json& document : json["documents"]) {
            text += document["title"][0].get<std::string>() + document["rows"].dump() + "\n";
        }
        return text;
    }

    const TemporaryFolder Folder;
};

struct Subset {
    const char* Drill;  ///< data, drill variables and step
    const char* Others;  ///< the drill variables but the one that was drilled on, and how they are cut
    std::vector<const char*> Files;
};

// clang-format off
const Subset Subsets[] = {
    {"stops.csv --categorical line,note --continuous day,km --categorize km=distinct --down line=A",
     "--categorical note --continuous day,km --categorize km=distinct",                             {"s.csv", "s.sav", "s.zsav", "s.dta"}},
    {"stops.csv --categorical line,note,day --continuous weight --weight weight --weighted-moments --down day=20240203",
     "--categorical line,note --continuous weight --weight weight --weighted-moments",              {"s.csv", "s.sav", "s.dta"}},
    {"survey.sav --categorical sex,region,commute --continuous age,income --down sex=Female --down income=#3 --up sex",
     "--categorical sex,region,commute --continuous age",                                           {"s.sav", "s.zsav", "s.dta"}},
    {"survey.sav --categorical commute,satisfaction,genre --select 'age > 30' --down commute=Missing",
     "--categorical satisfaction,genre",                                                          {"s.sav", "s.dta"}},
};
// clang-format on

TEST_F(SavedSubset, GivesTheTablesOfTheDrill) {
    for (const auto& [drill, others, files] : Subsets) {
        for (const std::string file : files) {
            const std::string tables = Tables(drill + (" --save " + file));
            EXPECT_EQ(Tables(file + " " + others), tables) << drill << "\n" << file;
        }
    }
}

TEST_F(SavedSubset, AnEmptyOneIsNotWritten) {
    const std::string path = Folder.Put("s.csv", "before");
    const Outcome outcome = Drill("stops.csv --categorical line --select 'km > 9' --save s.csv");
    EXPECT_EQ(outcome.Status, 1);
    EXPECT_EQ(outcome.Out, "");
    EXPECT_NE(outcome.Errors.find("The number of cases is zero.\n"), std::string::npos) << outcome.Errors;
    EXPECT_NE(outcome.Errors.find("Nothing was saved to \"s.csv\": no case is left."), std::string::npos)
        << outcome.Errors;
    EXPECT_EQ(ContentOf(path), "before");
    EXPECT_EQ(Folder.Files(), 2U);
}

}  // namespace
