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
              "odd.csv: 1 case, 1 variable\n\n#  Name        Type  Missing  Label  Values\n"
              "1  a\\u009B31m  text        0         \"x, y\"\n");
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
