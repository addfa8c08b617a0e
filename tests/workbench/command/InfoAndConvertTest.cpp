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
              "2  height  number        1\n"
              "3  day     date          1\n");
    EXPECT_NE(Quillara(Folder, "info --missing= small.csv").Out.find("NA"), std::string::npos);
    const std::string survey = QUILLARA_SAMPLES "/survey";
    EXPECT_EQ(Quillara(Folder, "info " + survey + ".csv --dictionary " + survey + "-dictionary.csv").Errors, "");
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

}  // namespace
