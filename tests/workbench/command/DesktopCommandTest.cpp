// What starts the desktop: it takes the place of the program, or one line says why it can't.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "tests/workbench/command/Program.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* NoScreen = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM";

/// A refusal, in one line that a text and what it says begin and hold.
void ExpectRefusal(const Outcome& outcome, int status, const std::string& begin, const std::string& reason) {
    EXPECT_EQ(outcome.Status, status);
    EXPECT_EQ(outcome.Out, "");
    EXPECT_THAT(outcome.Errors, testing::AllOf(StartsWith(begin), HasSubstr(reason)));
    EXPECT_EQ(std::ranges::count(outcome.Errors, '\n'), status) << outcome.Errors;
}

TEST(DesktopCommand, RefusesWhereThereIsNoScreen) {
    const TemporaryFolder folder;
    const std::string sample = testing_locations::Sample("survey.sav");
    for (const std::string& arguments : {"open " + sample, std::string("desktop"), "desktop " + sample}) {
        ExpectRefusal(Quillara(folder, arguments, NoScreen), 1, "quillara-desktop: ", "There is no screen");
    }
    ExpectRefusal(Quillara(folder, "open", NoScreen), 2, "quillara: ", "FILE");
}

TEST(DesktopCommand, TheDesktopAnswersWithoutAScreenWhatNeedsNone) {
    const TemporaryFolder folder;
    const std::string desktop = fs::path(testing_locations::Program()).parent_path() / "quillara-desktop";
    const auto run = [&](const std::string& arguments) {
        return Quillara(folder, "", std::string(NoScreen) + " " + desktop + " " + arguments + "; exit $?; ");
    };
    EXPECT_THAT(run("--help").Out, HasSubstr("quillara-desktop [FILE]"));
    EXPECT_THAT(run("--version").Out, StartsWith("quillara-desktop 0."));
    for (const auto& [arguments, reason] : {std::pair{"--hlep", "no option --hlep"}, {"a.csv b.csv", "One file"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.Status, 2);
        EXPECT_THAT(outcome.Errors, HasSubstr(reason));
    }
}

/// A copy of the program in a folder of its own, where there may be a desktop beside it.
TEST(DesktopCommand, IsTakenOverByTheDesktopBesideTheProgram) {
    const TemporaryFolder folder;
    const std::string program = folder.Path("quillara");
    const std::string desktop = folder.Path("quillara-desktop");
    const auto run = [&](const std::string& arguments) {
        return Quillara(folder, "", program + " " + arguments + "; exit $?; ");
    };
    fs::copy_file(testing_locations::Program(), program);
    struct Beside {
        const char* Content;  ///< null: there is none
        bool IsProgram;
        const char* Reason;
    };
    const Beside cases[] = {
        {nullptr, false, "The desktop isn't installed beside this program"},
        {"#!/bin/sh\n", false, "The desktop isn't installed beside this program"},
        {"no program", true, "The desktop can't be started: "},
    };
    for (const Beside& beside : cases) {
        if (beside.Content != nullptr) {
            folder.Put("quillara-desktop", beside.Content);
            fs::permissions(desktop, beside.IsProgram ? fs::perms::owner_all : fs::perms::owner_read);
        }
        ExpectRefusal(run("open any.sav"), 1, "quillara: ", beside.Reason);
        ExpectRefusal(run("desktop"), 1, "quillara: ", beside.Reason);
    }
    folder.Put("quillara-desktop", "#!/bin/sh\necho \"$# $1\"\nexit 7\n");
    fs::permissions(desktop, fs::perms::owner_all);
    for (const auto& [arguments, taken] : {std::pair("open 'a b.sav'", "1 a b.sav\n"), std::pair("desktop", "0 \n")}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.Status, 7);
        EXPECT_EQ(outcome.Out, taken);
    }
}

}  // namespace
