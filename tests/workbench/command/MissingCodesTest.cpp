// A survey whose missing values have names, from the file to saved subsets, as the program and other programs see it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/workbench/Tables.h"
#include "tests/workbench/command/Program.h"
#include "tests/workbench/formats/StatisticalMaker.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;

/// Eight cases of two groups; a number with a range and a code, and a text with two codes.
std::string SurveyBytes() {
    constexpr double blank = quillara::Missing;
    quillara::StatisticalMaker maker("sav");
    readstat_variable_t* question = maker.Number("q", {1, 2, 98, 99, blank, 97, 99, 1});
    readstat_variable_add_missing_double_range(question, 97, 98);
    readstat_variable_add_missing_double_value(question, 99);
    readstat_label_set_t* labels = maker.Labels(question, READSTAT_TYPE_DOUBLE);
    for (const auto& [value, label] :
         {std::pair(1, "Yes"), std::pair(2, "No"), std::pair(98, "Refused"), std::pair(99, "Not stated")}) {
        readstat_label_double_value(labels, value, label);
    }
    readstat_variable_t* town = maker.Text("town", {"Oslo", "XX", "Bergen", "", "YY", "Oslo", "XX", "XX"});
    readstat_variable_add_missing_string_value(town, "XX");
    readstat_variable_add_missing_string_value(town, "YY");
    readstat_label_string_value(maker.Labels(town, READSTAT_TYPE_STRING), "XX", "No code");
    maker.Number("group", {1, 1, 1, 1, 2, 2, 2, 2});
    maker.Number("w", {1, 1, 2.5, 1.25, 1, 1, 0.25, 1});
    return maker.Bytes();
}

struct MissingCodes : testing::Test {
    const TemporaryFolder Folder;
    const std::string Data = Folder.Put("s.sav", SurveyBytes());

    [[nodiscard]] json Documents(const std::string& options) const {
        const Outcome outcome = Quillara(Folder, "drill s.sav --format json --show frequencies " + options);
        EXPECT_EQ(outcome.Status, 0) << outcome.Errors;
        return json::parse(outcome.Out).at("documents");
    }
    /// "Refused 1, blank 1" of a table.
    [[nodiscard]] static std::string Shown(const json& document) {
        std::string shown;
        for (const json& each : document.value("missing", json::array())) {
            const std::string label = each["label"];
            shown += (shown.empty() ? "" : ", ") + (label.empty() ? each["code"].get<std::string>() : label) + " " +
                     each["count"].dump();
        }
        return shown;
    }
};

TEST_F(MissingCodes, AreCountedBelowTablesAsTheTableCounts) {
    struct Case {
        const char* Options;
        const char* Question;
        const char* Town;
    };
    // clang-format off
    constexpr Case cases[] = {
        {"--categorical q,town",                          "97 1, Refused 1, Not stated 2, blank 1", "No code 3, YY 1, blank 1"},
        {"--categorical q,town,group --down group=2",     "97 1, Not stated 1, blank 1",              "No code 2, YY 1"},
        {"--categorical q,town --weight w",               "97 1, Refused 3, Not stated 1, blank 1", "No code 2, YY 1, blank 1"},
        {"--categorical q,town --weight w --weighted-moments", "97 1, Refused 2.5, Not stated 1.5, blank 1", "No code 2.25, YY 1, blank 1.25"},
        {"--categorical q,town --casewise",               "97 1, Refused 1, Not stated 2, blank 1, deleted casewise 2", "No code 3, YY 1, blank 1, deleted casewise 2"},
        {"--categorical q,town --select 'missing(q, 99, \"Refused\")'", "Refused 1, Not stated 2",      "No code 1, blank 1"},
        {"--categorical q,town --valid q=99 --valid town", "97 1, Refused 1, blank 1",                ""},
    };
    // clang-format on
    for (const auto& [options, question, town] : cases) {
        const json documents = Documents(options);
        EXPECT_EQ(Shown(documents[0]), question) << options;
        EXPECT_EQ(Shown(documents[1]), town) << options;
        double told = 0;
        for (const json& each : documents[0]["missing"]) {
            told += each["count"].get<double>();
        }
        EXPECT_EQ(documents[0]["rows"].back()["cells"][0].get<double>(), told) << options;
    }
    const std::string note = "Missing: 97 1, Refused 1, Not stated 2, blank 1";
    EXPECT_THAT(Quillara(Folder, "drill s.sav --categorical q --show frequencies").Out, HasSubstr("\n" + note + "\n"));
    EXPECT_THAT(Quillara(Folder, "drill s.sav --categorical q --show frequencies --format html").Out,
                HasSubstr(">" + note + "<"));
    EXPECT_THAT(Quillara(Folder, "drill s.sav --categorical q --show distribution").Out, HasSubstr("\n" + note + "\n"));
}

TEST_F(MissingCodes, AreToldByInfo) {
    EXPECT_THAT(Quillara(Folder, "info s.sav").Out,
                HasSubstr("1 = Yes, 2 = No; missing: 97 to 98, 97 (1), 98 = Refused (1), 99 = Not stated (2)\n"));
    const json told = json::parse(Quillara(Folder, "info s.sav --format json").Out).at("variables");
    EXPECT_EQ(
        told[1].at("missingValues").dump(),
        R"({"ranges":[],"values":[{"cases":3,"label":"No code","value":"XX"},{"cases":1,"label":"","value":"YY"}]})");
    EXPECT_FALSE(told[2].contains("missingValues"));
}

TEST_F(MissingCodes, StayInSavedSubsets) {
    for (const char* extension : {"sav", "zsav", "qtable"}) {
        const std::string file = std::string("left.") + extension;
        ASSERT_EQ(
            Quillara(Folder, "drill s.sav --categorical q,town,group --down group=2 --show summary --save " + file)
                .Status,
            0);
        EXPECT_THAT(Quillara(Folder, "info " + file).Out,
                    testing::AllOf(HasSubstr("missing: 97 to 98, 97 (1), 98 = Refused (0), 99 = Not stated (1)\n"),
                                   HasSubstr("missing: XX = No code (2), YY (1)\n")));
    }
    // Casewise deletion leaves no case with a code, and the declaration stays.
    ASSERT_EQ(Quillara(Folder, "drill s.sav --categorical q,town --casewise --show summary --save whole.sav").Status,
              0);
    EXPECT_THAT(Quillara(Folder, "info whole.sav").Out, HasSubstr("99 = Not stated (0)\n"));
    const Outcome refused = Quillara(Folder, "drill s.sav --valid q=96 --categorical q");
    EXPECT_EQ(refused.Status, 1);
    EXPECT_THAT(refused.Errors,
                HasSubstr("has no missing value \"96\"; it has 97, 98 \"Refused\", 99 \"Not stated\"."));
}

TEST_F(MissingCodes, AreWhatAnotherProgramSees) {
    if (std::system("command -v pspp >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "PSPP isn't installed; with its graphics it is too large to be asked for";
    }
    ASSERT_EQ(Quillara(Folder, "convert s.sav t.qtable && cd " + Folder.Path("") + " && " +
                                   testing_locations::Program() + " convert t.qtable back.zsav")
                  .Status,
              0);
    Folder.Put("t.sps", "get file='back.zsav'.\ndisplay dictionary.\nfrequencies q town.\n");
    ASSERT_EQ(std::system(("cd " + Folder.Path("") + " && pspp -o out.csv t.sps >/dev/null").c_str()), 0);
    const std::string seen = ContentOf(Folder.Path("out.csv"));
    for (const char* line :
         {"97 THRU 98; 99", "\"\"XX    \"\"; \"\"YY    \"\"", ",97.00,1,12.5%", ",Not stated,2,25.0%",
          ",Refused,1,12.5%", "Missing,No code,3,37.5%", ",YY,1,12.5%", "Valid,Yes,2,25.0%,66.7%"}) {
        EXPECT_THAT(seen, HasSubstr(line));
    }
}

}  // namespace
