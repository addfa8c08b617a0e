#include <gtest/gtest.h>

#include "Program.h"

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
    const std::string survey = QUILLARA_SAMPLES "/survey";
    EXPECT_EQ(Quillara(Folder, "info " + survey + ".csv --dictionary " + survey + "-dictionary.csv").Errors, "");
}

TEST_F(InfoAndConvert, NoTextSteersTheTerminalOrLooksLikeTwo) {
    Folder.Put("odd.csv",
               "a\xC2\x9B"
               "31m\n\"x, y\"\n");
    EXPECT_EQ(Quillara(Folder, "info odd.csv").Out,
              "odd.csv: 1 case, 1 variable\n\n#  Name   Type  Missing  Label  Values\n"
              "1  a\xEF\xBF\xBD"
              "31m  text        0         \"x, y\"\n");
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

TEST_F(InfoAndConvert, ConvertedDataReadBackTheSame) {
    ASSERT_EQ(Quillara(Folder, "convert small.csv copy.csv --decimal=,").Status, 0);
    EXPECT_EQ(json::parse(Quillara(Folder, "info copy.csv --format json").Out)["variables"],
              json::parse(Quillara(Folder, "info small.csv --decimal , --format json").Out)["variables"]);
}

TEST_F(InfoAndConvert, CtrlCKeepsTheFileThatWasThere) {
    std::string large = "number,text\n";
    for (int number = 0; number < 400'000; ++number) {
        large += std::to_string(number) + ",text " + std::to_string(number % 1000) + "\n";
    }
    Folder.Put("large.csv", large);
    for (const int milliseconds : {20, 100, 200, 300, 400}) {
        const std::string copy = Folder.Put("copy.csv", "before");
        const std::string wait = std::to_string(milliseconds / 1000.0);
        const Outcome outcome =
            Quillara(Folder, "convert large.csv copy.csv", "timeout --foreground --preserve-status -s INT " + wait);
        EXPECT_EQ(ContentOf(copy) == "before", outcome.Status != 0) << milliseconds;
        EXPECT_TRUE(outcome.Status == 0 || outcome.Status == 130) << outcome.Status;
        EXPECT_EQ(Folder.Files(), 4U);
    }
}

}  // namespace
