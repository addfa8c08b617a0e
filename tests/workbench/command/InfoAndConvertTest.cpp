#include <gtest/gtest.h>

#include "tests/Locations.h"
#include "tests/workbench/command/Program.h"

namespace {

using nlohmann::json;

struct InfoAndConvert : testing::Test {
    InfoAndConvert() {
        Folder.Put("small.csv", "sex;height;day\nFemale;1,5;2024-02-01\n;NA;2024-02-02\nMäle;2;\n");
        Folder.Put("labels.csv",
                   "variable,value,label,description\n"
                   "height,,Body height,\n"
                   "height,2,tall,two metres\n"
                   "sex,Female,F,\n");
    }
    void PutLarge(int cases) const {
        std::string large = "number,text\n";
        for (int number = 0; number < cases; ++number) {
            large += std::to_string(number) + ",text " + std::to_string(number % 1000) + "\n";
        }
        Folder.Put("large.csv", large);
    }
    const TemporaryFolder Folder;
};

TEST_F(InfoAndConvert, InfoIsAnAlignedTable) {
    EXPECT_EQ(Quillara(Folder, "info small.csv --decimal ,").Out,
              "small.csv: 3 cases, 3 variables\n"
              "\n"
              "#  Name    Type    Missing  Label  Values\n"
              "1  sex     text          1         Female, Mäle\n"
              "2  height  number        1         1.5 to 2\n"
              "3  day     date          1         2024-02-01 to 2024-02-02\n");
    EXPECT_NE(Quillara(Folder, "info --missing= small.csv").Out.find("NA"), std::string::npos);
    const std::string survey = testing_locations::Sample("survey");
    EXPECT_EQ(Quillara(Folder, "info " + survey + ".csv --dictionary " + survey + "-dictionary.csv").Errors, "");
}

TEST_F(InfoAndConvert, NoTextSteersTheTerminalOrLooksLikeTwo) {
    Folder.Put("odd.csv",
               "a\xC2\x9B"
               "31m\n\"x, y\"\n");
    EXPECT_EQ(Quillara(Folder, "info odd.csv").Out,
              "odd.csv: 1 case, 1 variable\n\n#  Name        Type  Missing  Label  Values\n"
              "1  a\\u009B31m  text        0         \"x, y\"\n");
}

TEST_F(InfoAndConvert, InfoAsJsonHasAllLabels) {
    const json info =
        json::parse(Quillara(Folder, "info small.csv --decimal=, --format json --dictionary labels.csv").Out);
    EXPECT_EQ(info["data"]["cases"], 3);
    EXPECT_EQ(info["variables"][0]["labels"],
              json::parse(R"([{"value":"Female","label":"F"},{"value":"Mäle","label":"Mäle"}])"));
    EXPECT_EQ(info["variables"][1], json::parse(R"({"name":"height","type":"number","label":"Body height",
        "format":"","missing":1,"labels":[{"value":2,"label":"tall","description":"two metres"}]})"));
}

/// The variables that info tells of a file, but for their display formats.
json VariablesOf(const TemporaryFolder& folder, const std::string& file) {
    json variables = json::parse(Quillara(folder, "info --format json " + file).Out)["variables"];
    for (json& variable : variables) {
        variable.erase("format");
    }
    return variables;
}

TEST_F(InfoAndConvert, ConvertedDataReadBackTheSame) {
    const json variables = VariablesOf(Folder, "small.csv --decimal ,");
    std::string before = "small.csv --decimal ,";
    for (const std::string extension : {"sav", "dta", "zsav", "csv", "DTA"}) {
        const Outcome outcome = Quillara(Folder, "convert " + before + " copy." + extension);
        EXPECT_EQ(outcome.Out + outcome.Errors, "") << extension;
        before = "copy." + extension;
        EXPECT_EQ(VariablesOf(Folder, before), variables) << extension;
    }
    const std::string reader = "mkfifo pipe.sav; cat pipe.sav >out.sav &";
    EXPECT_EQ(Quillara(Folder, "convert small.csv pipe.sav --decimal , && wait", reader).Status, 0);
    EXPECT_EQ(VariablesOf(Folder, "out.sav"), variables);
}

TEST_F(InfoAndConvert, WhatCsvLosesIsSaidAndKeptByTheWaysThatAreNamed) {
    Folder.Put("a.csv", "id,answer\n1,None\n2,x\n3,\n");
    for (const std::string line :
         {"convert a.csv b.csv", "drill a.csv --categorical answer --show frequencies --save b.csv"}) {
        const Outcome outcome = Quillara(Folder, line + " --missing ''");
        EXPECT_EQ(outcome.Status, 0);
        EXPECT_EQ(outcome.Errors,
                  "Variable \"answer\" of \"b.csv\": when it is read, \"None\" become missing data (read it with "
                  "--missing \"\", or write sav).\n");
        EXPECT_NE(Quillara(Folder, "info b.csv --missing ''").Out.find("1         None, x"), std::string::npos) << line;
        EXPECT_EQ(Quillara(Folder, "convert b.csv c.sav --missing ''").Errors, "");
    }
}

TEST_F(InfoAndConvert, WhatCannotBeWrittenIsOneLine) {
    for (const std::string out : {"out.xlsx", "out", "out.sas7bdat"}) {
        const Outcome outcome = Quillara(Folder, "convert none.csv " + out);
        EXPECT_EQ(outcome.Status, 1);
        EXPECT_NE(
            outcome.Errors.find("\"" + out + "\" can't be written: data files can be written as csv, sav, zsav or dta"),
            std::string::npos)
            << outcome.Errors;
    }
    EXPECT_NE(Quillara(Folder, "convert --help").Out.find("csv, sav, zsav or dta"), std::string::npos);
    EXPECT_EQ(Folder.Files(), 2U);
}

TEST_F(InfoAndConvert, EndlessTextEndsWhenItTakesTooMuchMemory) {
    for (const std::string line : {"info /dev/stdin", "info small.csv --decimal , --dictionary /dev/stdin"}) {
        const Outcome outcome = Quillara(Folder, line + " --max-memory 200M", "yes variable |");
        EXPECT_EQ(outcome.Status, 1);
        EXPECT_NE(outcome.Errors.find("200 MiB; --max-memory sets another limit.\n"), std::string::npos)
            << outcome.Errors;
    }
}

TEST_F(InfoAndConvert, FullDiskKeepsTheFileThatWasThere) {
    PutLarge(20'000);
    for (const std::string name : {"copy.csv", "copy.sav", "copy.zsav", "copy.dta"}) {
        const std::string copy = Folder.Put(name, "before");
        EXPECT_EQ(Quillara(Folder, "convert large.csv " + name, "trap '' XFSZ; ulimit -f 64;").Status, 1);
        EXPECT_GT(Quillara(Folder, "convert large.csv " + name, "ulimit -f 64;").Status, 128);
        EXPECT_EQ(ContentOf(copy), "before");
        std::filesystem::remove(copy);
        EXPECT_EQ(Folder.Files(), 3U) << name;
    }
}

TEST_F(InfoAndConvert, ASignalKeepsTheFileThatWasThere) {
    PutLarge(400'000);
    const struct {
        const char* Name;
        const char* Signal;
    } cases[] = {{"copy.csv", "INT"}, {"copy.sav", "INT"}, {"copy.dta", "TERM"}, {"copy.zsav", "HUP"}};
    for (const auto& [name, signal] : cases) {
        for (const int milliseconds : {20, 200, 400, 600}) {
            const std::string copy = Folder.Put(name, "before");
            const std::string wait = std::to_string(milliseconds / 1000.0);
            const Outcome outcome =
                Quillara(Folder, std::string("convert large.csv ") + name,
                         std::string("timeout --foreground --preserve-status -s ") + signal + " " + wait);
            EXPECT_EQ(ContentOf(copy) == "before", outcome.Status != 0) << name << milliseconds;
            EXPECT_TRUE(outcome.Status == 0 || outcome.Status >= 129) << outcome.Status;
            std::filesystem::remove(copy);
            EXPECT_EQ(Folder.Files(), 3U);
        }
    }
    const std::string copy = Folder.Put("copy.sav", "before");
    const Outcome killed = Quillara(Folder, "convert large.csv copy.sav", "timeout --foreground -s KILL 0.5");
    EXPECT_EQ(ContentOf(copy) == "before", killed.Status != 0);
}

}  // namespace
