#include <gtest/gtest.h>

#include "Program.h"

namespace {

class InfoAndConvert : public testing::Test {
  protected:
    Folder Files;
    std::string Data = Files.Write("small.csv",
                                   "sex;height;day\n"
                                   "Female;1,5;2024-02-01\n"
                                   ";NA;2024-02-02\n"
                                   "Mäle;2;\n");
    std::string Dictionary = Files.Write("labels.csv",
                                         "variable,value,label,description\n"
                                         "height,,Body height,\n"
                                         "height,2,tall,two metres\n"
                                         "sex,Female,F,\n");

    Outcome Info(const std::string& options) {
        std::vector<std::string> arguments = {"info", Data, "--decimal", ","};
        for (const std::string& word : Words(options)) {
            arguments.push_back(word);
        }
        return Quillara(arguments);
    }
};

TEST_F(InfoAndConvert, InfoIsAnAlignedTable) {
    EXPECT_EQ(Info("").Out,
              "small.csv: 3 cases, 3 variables\n"
              "\n"
              "#  Name    Type    Missing  Label  Values\n"
              "1  sex     text          1         Female, Mäle\n"
              "2  height  number        1\n"
              "3  day     date          1\n");
}

TEST_F(InfoAndConvert, InfoAsJsonHasAllLabels) {
    const Outcome outcome = Info("--format json --dictionary " + Dictionary);
    ASSERT_EQ(outcome.Status, 0) << outcome.Errors;
    const nlohmann::json json = nlohmann::json::parse(outcome.Out);
    EXPECT_EQ(json.at("data").at("cases"), 3);
    const nlohmann::json& variables = json.at("variables");
    EXPECT_EQ(variables.at(0).at("labels"),
              nlohmann::json::parse(R"([{"value":"Female","label":"F"},{"value":"Mäle","label":"Mäle"}])"));
    EXPECT_EQ(variables.at(1), nlohmann::json::parse(R"({"name":"height","type":"number","label":"Body height",
        "format":"","missing":1,"labels":[{"value":2,"label":"tall","description":"two metres"}]})"));
}

TEST_F(InfoAndConvert, ConvertedDataReadBackTheSame) {
    const std::string copy = Files.Path("copy.csv");
    ASSERT_EQ(Quillara({"convert", Data, copy, "--decimal=,"}).Status, 0);
    const Outcome again = Quillara({"info", copy, "--format", "json"});
    nlohmann::json first = nlohmann::json::parse(Info("--format json").Out);
    nlohmann::json second = nlohmann::json::parse(again.Out);
    EXPECT_EQ(first.at("variables"), second.at("variables"));
}

TEST_F(InfoAndConvert, AnEmptyValueBehindAnEqualsSignIsAValue) {
    EXPECT_NE(Quillara({"info", "--missing=", Data}).Out.find("NA"), std::string::npos);
}

}  // namespace
