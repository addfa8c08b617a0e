#include <gtest/gtest.h>

#include <algorithm>

#include "tests/workbench/command/Program.h"

namespace {

/// Small files that command lines name by DATA and names of its dictionaries.
struct RefusalTest : testing::Test {
    RefusalTest() {
        Folder.Put("DATA", "sex,age,day,x\nFemale,20,2024-02-01,1\nMale,30,2024-02-02,2\n");
        Folder.Put("data.csv", "x\n1\n");
        Folder.Put("NOVAR", "value,label\n1,one\n");
        Folder.Put("BADVAR", "variable,value,label\nheight,1,one\n");
        Folder.Put("BADNUMBER", "variable,value,label\nage,young,one\n");
        Folder.Put("BADDAY", "variable,value,label\nday,2024-02-30,one\n");
        std::filesystem::create_symlink("new.csv", Folder.Path("LINK.csv"));
    }
    const TemporaryFolder Folder;
};

struct Refusal {
    int Status;
    const char* Reason;  ///< stands in the first line of the complaint
    std::vector<std::string> Lines;  ///< those that begin with -- are options of a drill on DATA
};

// clang-format off
const Refusal Refusals[] = {
    {2, "desktop",                      {"", "open DATA"}},
    {2, "dig",                          {"dig DATA"}},
    {2, "FILE",                         {"drill"}},
    {2, "--colour",                     {"--colour red"}},
    {2, "VAR=CATEGORY",                 {"--down sex"}},
    {2, "--weight",                     {"--weight x --weight x"}},
    {2, "Unknown result \"histogram\"", {"--show summary,histogram"}},
    {2, "xml",                          {"--format xml"}},
    {2, "median, se, sd, 1.96se",       {"--box-type mean", "--box-type ''"}},
    {2, "svg, png, pdf",                {"--plots p --show pies --plot-format gif"}},
    {2, "from 120 to 10000",            {"--size 900", "--size x", "--size 119x600", "--size 900x10001", "--size 9e2x600",
                                         "--size -900x600", "--size 900x600x3"}},
    {2, "X1,X2:Y1,Y2",                  {"--show hist3d", "--hist3d age", "--hist3d age:", "--hist3d :", "--hist3d"}},
    {2, "\"age\" is given twice",       {"--hist3d age:age,age"}},
    {2, "no chart",                     {"--plots p", "--plots p --show summary"}},
    {2, "No folder",                    {"--plots '' --show pies"}},
    {2, "ab",                           {"--separator ab"}},
    {2, "ASCII character",              {"--separator §", "--separator $(printf '\\303')", "--decimal ·"}},
    {2, "\"sex\" is given twice",       {"--categorical sex,sex", "--categorical sex --continuous sex"}},
    {2, "\"age\" is given twice",       {"--review-categorical age --review-continuous x,age"}},
    {2, "--categorical",                {"--categorical '\"sex'"}},
    {2, "VAR=METHOD",                   {"--categorize age"}},
    {2, "Unknown method",               {"--categorize age=equal:3"}},
    {2, "distinct",                     {"--categorize age=distinct:3"}},
    {2, "2 to 999",                     {"--categorize age=exact", "--categorize age=exact:1", "--categorize age=neat:1000",
                                         "--categorize age=neat:2.0"}},
    {2, "size of 0 or more",            {"--categorize age=step:-1"}},
    {2, "number to start at",           {"--categorize age=step:1@"}},
    {2, "rising",                       {"--categorize age=bounds:", "--categorize age=bounds:1,1",
                                         "--categorize age=bounds:1,1e999"}},
    {2, "",                             {"--select 'age >'"}},
    {2, "OUT",                          {"convert DATA"}},
    {2, "--show needs a LIST.",         {"--show"}},
    {2, "write --categorical sex,age.", {"--categorical sex --categorical age"}},
    {2, "in quotes",                    {"--categorical sex, age", "--categorical sex , age", "--show summary, frequencies"}},
    {2, "takes no value",               {"--casewise=1", "info DATA --no-header=yes"}},
    {2, "mean \"quillara drill DATA\"?", {"DATA"}},
    {2, "/dev/stdin",                   {"info -"}},
    {2, "the data file \"./DATA\"",     {"--output ./DATA", "convert DATA ./DATA"}},
    {2, "dictionary file",              {"--dictionary BADVAR --output BADVAR"}},
    {2, "the data file \"data.csv\"",   {"drill ./data.csv --save data.csv"}},
    {2, "choose two files",             {"--save new.csv --output ./new.csv", "--save LINK.csv --output new.csv",
                                         "--save new.csv --output LINK.csv"}},
    {2, "csv, sav, zsav or dta",        {"--save new", "--save new.por", "drill NOWHERE --save csv"}},

    {1, "NOWHERE",                      {"drill NOWHERE"}},
    {1, "height",                       {"--categorical height", "--weight height", "--select 'height > 1'", "--up height",
                                         "--categorize height=distinct", "--down height=1"}},
    {1, "did you mean \"age\"?",         {"--weight Age"}},
    {1, "texts",                        {"--weight sex"}},
    {1, "no continuous drill variable", {"--categorize sex=distinct", "--review-continuous age --categorize age=distinct"}},
    {1, "no drill variable",            {"--categorical sex --down x=1"}},
    {1, "\"Female\", \"Male\"",         {"--down sex=Other", "--down sex=#2", "--down sex=1", "--down sex=Missing"}},
    {1, "--up sex",                     {"--down sex=Male --down sex=Male"}},
    {1, "no review variable",           {"--hist3d sex:age", "--review-continuous age --hist3d age:x"}},
    {1, "can't be made",                {"--show pies --plots DATA", "--show pies --plots DATA/p"}},
    {1, "no step",                      {"--up sex"}},
    {1, "it has \"value\", \"label\"",    {"--dictionary NOVAR"}},
    {1, "line 2",                       {"--dictionary BADVAR"}},
    {1, "numbers",                      {"--dictionary BADNUMBER"}},
    {1, "YYYY-MM-DD",                   {"--dictionary BADDAY"}},
    {1, "NOFOLDER",                     {"--output NOFOLDER/results.txt", "--save NOFOLDER/subset.csv"}},
    {1, "no drill variables",           {"--review-continuous age --save new.csv"}},
    {1, "out.csv",                      {"convert DATA DATA/out.csv"}},
};
// clang-format on

TEST_F(RefusalTest, SaysWhyAndWritesNothing) {
    for (const auto& [status, reason, lines] : Refusals) {
        for (const std::string& line : lines) {
            const Outcome outcome = Quillara(Folder, (line.starts_with("--") ? "drill DATA " : "") + line);
            const std::string& errors = outcome.Errors;
            EXPECT_EQ(outcome.Status, status) << line;
            EXPECT_EQ(outcome.Out, "") << line;
            EXPECT_NE(errors.substr(0, errors.find('\n')).find(reason), std::string::npos) << line << "\n" << errors;
            EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), status) << errors;
            EXPECT_EQ(errors.find("--help") != std::string::npos, status == 2) << errors;
        }
    }
}

TEST_F(RefusalTest, NinetyNineBoundsAreTaken) {
    EXPECT_EQ(Quillara(Folder, "drill DATA --categorize age=bounds:$(seq -s , 99)").Status, 0);
    EXPECT_EQ(Quillara(Folder, "drill DATA --categorize age=bounds:$(seq -s , 100)").Status, 2);
}

TEST_F(RefusalTest, EverySubcommandAnswersHelp) {
    for (const std::string command : {"", "drill", "info", "convert", "open"}) {
        const Outcome outcome = Quillara(Folder, command + " --help");
        EXPECT_TRUE(outcome.Status == 0 && !outcome.Out.empty() && outcome.Errors.empty()) << command;
    }
}

}  // namespace
