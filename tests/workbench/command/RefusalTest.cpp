#include <gtest/gtest.h>

#include "Program.h"

namespace {

struct Refusal {
    const char* Line;  ///< arguments; DATA stands for a small file
    int Status;
    const char* Reason;  ///< stands in the first line of the complaint
};

class RefusalTest : public testing::TestWithParam<Refusal> {
  protected:
    Folder Files;

    RefusalTest() {
        Files.Write("DATA", "sex,age,day,x\nFemale,20,2024-02-01,1\nMale,30,2024-02-02,2\n");
        Files.Write("NOVAR", "value,label\n1,one\n");
        Files.Write("BADVAR", "variable,value,label\nheight,1,one\n");
        Files.Write("BADNUMBER", "variable,value,label\nage,young,one\n");
        Files.Write("BADDAY", "variable,value,label\nday,2024-02-30,one\n");
    }

    Outcome Run(const std::string& line) {
        std::vector<std::string> arguments = Words(line);
        for (std::string& argument : arguments) {
            const bool isFile =
                !argument.empty() && argument.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
            argument = isFile ? Files.Path(argument) : argument;
        }
        return Quillara(arguments);
    }
};

TEST_P(RefusalTest, SaysWhyAndWritesNothing) {
    const Outcome outcome = Run(GetParam().Line);
    EXPECT_EQ(outcome.Status, GetParam().Status) << GetParam().Line;
    EXPECT_EQ(outcome.Out, "");
    const std::string first = outcome.Errors.substr(0, outcome.Errors.find('\n'));
    EXPECT_NE(first.find(GetParam().Reason), std::string::npos) << GetParam().Line << "\n" << outcome.Errors;
    const auto lines = std::count(outcome.Errors.begin(), outcome.Errors.end(), '\n');
    EXPECT_EQ(lines, GetParam().Status == 2 ? 2 : 1) << outcome.Errors;
    EXPECT_EQ(outcome.Errors.find("--help") != std::string::npos, GetParam().Status == 2) << outcome.Errors;
}

// clang-format off
constexpr Refusal Refusals[] = {
    // Line                                                              Status Reason
    {"",                                                                 2, "desktop"},
    {"open DATA",                                                        2, "desktop"},
    {"dig DATA",                                                         2, "dig"},
    {"drill",                                                            2, "FILE"},
    {"drill DATA --colour red",                                          2, "--colour"},
    {"drill DATA --down",                                                2, "--down"},
    {"drill DATA --down sex",                                            2, "VAR=CATEGORY"},
    {"drill DATA --weight x --weight x",                                 2, "--weight"},
    {"drill DATA --show summary,histogram",                              2, "unknown result \"histogram\""},
    {"drill DATA --show ''",                                             2, "unknown result \"\""},
    {"drill DATA --after first",                                         2, "first"},
    {"drill DATA --format xml",                                          2, "xml"},
    {"drill DATA --separator ab",                                        2, "ab"},
    {"drill DATA --categorical sex,sex",                                 2, "\"sex\" is given twice"},
    {"drill DATA --categorical sex --continuous sex",                    2, "\"sex\" is given twice"},
    {"drill DATA --review-categorical age --review-continuous x,age",    2, "\"age\" is given twice"},
    {"drill DATA --categorical '\"sex'",                                 2, "--categorical"},
    {"drill DATA --categorize age",                                      2, "VAR=METHOD"},
    {"drill DATA --categorize age=equal:3",                              2, "unknown method"},
    {"drill DATA --categorize age=distinct:3",                           2, "distinct"},
    {"drill DATA --categorize age=exact",                                2, "2 to 999"},
    {"drill DATA --categorize age=exact:1",                              2, "2 to 999"},
    {"drill DATA --categorize age=neat:1000",                            2, "2 to 999"},
    {"drill DATA --categorize age=neat:2.0",                             2, "2 to 999"},
    {"drill DATA --categorize age=step:-1",                              2, "size of 0 or more"},
    {"drill DATA --categorize age=step:1@",                              2, "number to start at"},
    {"drill DATA --categorize age=bounds:",                              2, "rising"},
    {"drill DATA --categorize age=bounds:1,1",                           2, "rising"},
    {"drill DATA --categorize age=bounds:1,1e999",                       2, "rising"},
    {"drill DATA --select 'age >'",                                      2, ""},
    {"info DATA --format csv",                                           2, "csv"},
    {"convert DATA",                                                     2, "OUT"},

    {"drill NOWHERE",                                                    1, "NOWHERE"},
    {"drill DATA --categorical height",                                  1, "height"},
    {"drill DATA --weight height",                                       1, "height"},
    {"drill DATA --weight sex",                                          1, "texts"},
    {"drill DATA --select 'height > 1'",                                 1, "height"},
    {"drill DATA --categorize height=distinct",                          1, "height"},
    {"drill DATA --categorize sex=distinct",                             1, "no continuous drill variable"},
    {"drill DATA --review-continuous age --categorize age=distinct",     1, "no continuous drill variable"},
    {"drill DATA --down height=1",                                       1, "height"},
    {"drill DATA --categorical sex --down x=1",                          1, "no drill variable"},
    {"drill DATA --down sex=Other",                                      1, "\"Female\", \"Male\""},
    {"drill DATA --down sex=#2",                                         1, "\"Female\", \"Male\""},
    {"drill DATA --down sex=1",                                          1, "\"Female\", \"Male\""},
    {"drill DATA --down sex=Missing",                                    1, "\"Female\", \"Male\""},
    {"drill DATA --down sex=Male --down sex=Male",                       1, "--up sex"},
    {"drill DATA --up sex",                                              1, "no step"},
    {"drill DATA --up height",                                           1, "height"},
    {"drill DATA --dictionary NOVAR",                                    1, "column named variable"},
    {"drill DATA --dictionary BADVAR",                                   1, "line 2"},
    {"drill DATA --dictionary BADNUMBER",                                1, "numbers"},
    {"drill DATA --dictionary BADDAY",                                   1, "YYYY-MM-DD"},
    {"drill DATA --output NOFOLDER/results.txt",                         1, "NOFOLDER"},
    {"convert DATA DATA/out.csv",                                        1, "out.csv"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(All, RefusalTest, testing::ValuesIn(Refusals));

TEST_F(RefusalTest, NinetyNineBoundsAreTaken) {
    std::string line = "drill DATA --categorize age=bounds:1";
    for (int bound = 2; bound <= 99; ++bound) {
        line.append(",").append(std::to_string(bound));
    }
    EXPECT_EQ(Run(line).Status, 0);
    EXPECT_EQ(Run(line + ",100").Status, 2);
}

TEST_F(RefusalTest, EverySubcommandAnswersHelp) {
    for (const char* command : {"", "drill ", "info ", "convert ", "open "}) {
        const Outcome outcome = Run(std::string(command) + "--help");
        EXPECT_EQ(outcome.Status, 0) << command;
        EXPECT_NE(outcome.Out, "") << command;
        EXPECT_EQ(outcome.Errors, "") << command;
    }
}

}  // namespace
