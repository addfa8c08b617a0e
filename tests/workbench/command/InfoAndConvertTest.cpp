#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/workbench/command/Program.h"

namespace {

struct InfoAndConvert : testing::Test {
    const TemporaryFolder Folder;
    const std::string Data = Folder.Put("data.csv", "sex,height\nFemale,1.5\n");
};

TEST_F(InfoAndConvert, NoTextSteersTheTerminalOrLooksLikeTwo) {
    Folder.Put("odd.csv",
               "a\xC2\x9B"
               "31m\n\"x, y\"\n");
    EXPECT_EQ(Quillara(Folder, "info odd.csv").Out,
              "odd.csv: 1 case, 1 variable\n\n"
              "#  Name        Type  Used as      Missing  Distinct  Cases  Label  Values\n"
              "1  a\\u009B31m  text  categorical        0         1  \u2588             \"x, y\"\n");
}

/// Places that a line takes, of characters of one place each.
std::size_t PlacesOf(const std::string& line) {
    return static_cast<std::size_t>(std::ranges::count_if(line, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

TEST_F(InfoAndConvert, NoLineIsWiderThanTheTerminal) {
    for (const std::size_t width : {80U, 100U, 132U}) {
        const std::string columns = "export COLUMNS=" + std::to_string(width) + ";";
        std::istringstream lines(Quillara(Folder, "info " + testing_locations::Sample("survey.sav"), columns).Out);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(PlacesOf(line), width) << line;
        }
    }
}

TEST_F(InfoAndConvert, PipesAreWrittenTo) {
    const std::string reader = "mkfifo pipe.sav; cat pipe.sav >out.sav &";
    EXPECT_EQ(Quillara(Folder, "convert data.csv pipe.sav && wait", reader).Status, 0);
    EXPECT_EQ(Quillara(Folder, "convert out.sav back.csv").Status, 0);
    EXPECT_EQ(ContentOf(Folder.Path("back.csv")), ContentOf(Data));
}

TEST_F(InfoAndConvert, EndlessTextEndsWhenItTakesTooMuchMemory) {
    for (const std::string line : {"info /dev/stdin", "info data.csv --dictionary /dev/stdin"}) {
        const Outcome outcome = Quillara(Folder, line + " --max-memory 200M", "yes variable |");
        EXPECT_EQ(outcome.Status, 1);
        EXPECT_NE(outcome.Errors.find("200 MiB; --max-memory sets another limit.\n"), std::string::npos)
            << outcome.Errors;
    }
}

}  // namespace
