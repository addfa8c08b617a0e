// Runs the sessions in tests/sessions; the README there tells how they are written.

#include <algorithm>
#include <functional>
#include <map>

#include "tests/Scripts.h"
#include "tests/workbench/command/DocumentsInShort.h"
#include "tests/workbench/command/Program.h"

namespace {

using testing_scripts::ReadsAs;
using testing_scripts::Split;
using testing_scripts::Texts;
using Files = std::map<std::string, std::string>;  // names and contents

/// Runs of the program that have one outcome.
struct Runs {
    std::string Place;  ///< for messages
    bool IsShort = false;
    Texts Arguments;
    int Status = 0;
    std::string Reason;  ///< of a status that isn't 0
    std::string Out;
    std::string Errors;
    Files Afterwards;
};

/// A session: the files that it begins with, then runs.
class Session {
  public:
    explicit Session(const std::string& path) {
        for (const testing_scripts::Line& line : testing_scripts::LinesOf(path)) {
            const auto [mark, rest] = Split(line.Text, " ");
            if (mark == "$" || mark == "%") {
                TakeRun(line.Place, mark == "%", rest);
            } else if (Marks.contains(mark)) {
                Marks.at(mark)(*this, rest);
            } else if (!line.SaysNothing()) {
                ADD_FAILURE() << line.Place << ": unknown mark " << mark;
            }
            FollowsRun = mark == "$" || mark == "%";
        }
    }

    Files Given;
    std::map<std::string, std::string> Links;  ///< names and targets
    std::vector<Runs> Steps;

  private:
    /// One right behind another has its outcome.
    void TakeRun(const std::string& place, bool isShort, const std::string& arguments) {
        if (!FollowsRun) {
            Steps.emplace_back();
            Steps.back().Place = place;
            Steps.back().IsShort = isShort;
        }
        Steps.back().Arguments.push_back((arguments.starts_with("--") ? "drill " + First + " " : "") + arguments);
    }
    void HoldFile(const std::string& name) {
        First = First.empty() ? name : First;
        Held = &Given[name];
    }

    /// "1: why".
    void Fail(const std::string& text) {
        Steps.back().Status = std::stoi(text);
        Steps.back().Reason = Split(text, ": ").second;
    }

    // clang-format off
    const std::map<std::string, void (*)(Session&, const std::string&)> Marks{
        {"file",  [](Session& session, auto& name)  { session.HoldFile(name); }},
        {"link",  [](Session& session, auto& text)  { session.Links.insert(Split(text, " ")); }},
        {"holds", [](Session& session, auto& name)  { session.Held = &session.Steps.back().Afterwards[name]; }},
        {"|",     [](Session& session, auto& line)  { *session.Held += line + "\n"; }},
        {"fails", [](Session& session, auto& text)  { session.Fail(text); }},
        {">",     [](Session& session, auto& line)  { session.Steps.back().Out += line + "\n"; }},
        {"!",     [](Session& session, auto& line)  { session.Steps.back().Errors += line + "\n"; }},
    };
    // clang-format on

    std::string First;
    std::string* Held = nullptr;
    bool FollowsRun = false;
};

std::string DocumentsInShort(const std::string& out) {
    std::string text;
    const nlohmann::json results = nlohmann::json::parse(out);
    for (const nlohmann::json& document : results["documents"]) {
        text += InShort(document) + "\n";
    }
    return text;
}

Files ContentsOf(const TemporaryFolder& folder) {
    Files contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path(""))) {
        contents[entry.path()] = entry.is_directory() ? "" : ContentOf(entry.path());
    }
    return contents;
}

void ExpectRefusal(const Outcome& outcome, const Runs& runs) {
    EXPECT_EQ(outcome.Out, "");
    EXPECT_THAT(Split(outcome.Errors, "\n").first, ReadsAs("quillara: ..." + runs.Reason + "..."));
    EXPECT_EQ(std::ranges::count(outcome.Errors, '\n'), runs.Status) << outcome.Errors;
    EXPECT_EQ(outcome.Errors.find("--help") != std::string::npos, runs.Status == 2) << outcome.Errors;
}

void ExpectDone(const Outcome& outcome, const Runs& runs) {
    EXPECT_THAT(runs.IsShort && !outcome.Out.empty() ? DocumentsInShort(outcome.Out) : outcome.Out, ReadsAs(runs.Out));
    EXPECT_THAT(outcome.Errors, ReadsAs(runs.Errors));
}

void Expect(const TemporaryFolder& folder, const Runs& runs) {
    const std::string samples = "SAMPLES=" + testing_locations::Sample("") + ";";
    for (const std::string& arguments : runs.Arguments) {
        SCOPED_TRACE(runs.Place + "\n" + arguments);
        const Files before = ContentsOf(folder);
        const Outcome outcome = Quillara(folder, arguments + (runs.IsShort ? " --format json" : ""), samples);
        ASSERT_EQ(outcome.Status, runs.Status) << outcome.Errors;
        runs.Status == 0 ? ExpectDone(outcome, runs) : ExpectRefusal(outcome, runs);
        EXPECT_TRUE(runs.Status == 0 || ContentsOf(folder) == before) << "files have changed";
        for (const auto& [name, content] : runs.Afterwards) {
            EXPECT_EQ(ContentOf(folder.Path(name)), content);
        }
    }
}

struct SessionTest : testing::TestWithParam<std::string> {};

TEST_P(SessionTest, GoesAsWritten) {
    const Session session(GetParam());
    const TemporaryFolder folder;
    const auto pathOf = [&](const std::string& name) {
        std::filesystem::create_directories(std::filesystem::path(folder.Path(name)).parent_path());
        return folder.Path(name);
    };
    for (const auto& [name, content] : session.Given) {
        std::ofstream(pathOf(name), std::ios::binary) << content;
    }
    for (const auto& [name, target] : session.Links) {
        std::filesystem::create_symlink(target, pathOf(name));
    }
    for (const Runs& runs : session.Steps) {
        Expect(folder, runs);
    }
}

INSTANTIATE_TEST_SUITE_P(Sessions, SessionTest, testing::ValuesIn(testing_scripts::ScriptsIn({"sessions"})),
                         testing_scripts::NameOf);

}  // namespace
