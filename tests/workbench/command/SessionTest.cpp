// Runs the sessions in tests/sessions; the README there tells how they are written.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "tests/workbench/command/DocumentsInShort.h"
#include "tests/workbench/command/Program.h"

namespace {

using Lines = std::vector<std::string>;

std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

/// Runs of the program that have one outcome.
struct Runs {
    std::string Place;  ///< for messages
    Lines Arguments;
    bool IsShort = false;
    int Status = 0;
    std::string Reason;  ///< of a status that isn't 0
    Lines Out;
    Lines Errors;
    std::map<std::string, Lines> Files;  ///< what they hold afterwards
};

/// A session: the files that it begins with, then runs.
struct Session {
    Lines FileNames;
    std::map<std::string, Lines> Files;
    std::map<std::string, std::string> Links;
    std::vector<Runs> Steps;
};

/// Takes a session line by line.
class SessionReader {
  public:
    explicit SessionReader(const std::string& path) {
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            Place = path + ":" + std::to_string(++Number);
            const std::size_t blank = std::min(line.find(' '), line.size());
            Take(line.substr(0, blank), line.substr(std::min(blank + 1, line.size())));
        }
    }
    [[nodiscard]] const Session& Result() const { return Read; }

  private:
    void Take(const std::string& mark, const std::string& rest) {
        if (mark == "file") {
            Read.FileNames.push_back(rest);
            Held = &Read.Files[rest];
        } else if (mark == "link") {
            const std::size_t blank = rest.find(' ');
            Read.Links[rest.substr(0, blank)] = rest.substr(blank + 1);
        } else if (mark == "holds") {
            Held = &Read.Steps.back().Files[rest];
        } else if (mark == "|") {
            Held->push_back(rest);
        } else if (mark == "$" || mark == "%") {
            TakeRun(rest, mark == "%");
        } else if (mark == "fails") {
            Read.Steps.back().Status = std::stoi(rest);
            Read.Steps.back().Reason = rest.substr(rest.find(": ") + 2);
        } else if (mark == ">" || mark == "!") {
            (mark == ">" ? Read.Steps.back().Out : Read.Steps.back().Errors).push_back(rest);
        } else if (!mark.empty() && mark.front() != '#') {
            ADD_FAILURE() << Place << ": unknown mark " << mark;
        }
        LastWasRun = mark == "$" || mark == "%";
    }

    /// One right behind another has its outcome.
    void TakeRun(const std::string& arguments, bool isShort) {
        if (!LastWasRun) {
            Read.Steps.emplace_back();
            Read.Steps.back().Place = Place;
            Read.Steps.back().IsShort = isShort;
        }
        const bool areOptions = arguments.starts_with("--");
        Read.Steps.back().Arguments.push_back((areOptions ? "drill " + Read.FileNames.front() + " " : "") + arguments);
    }

    Session Read;
    std::string Place;
    int Number = 0;
    Lines* Held = nullptr;
    bool LastWasRun = false;
};

/// Whether a text is as expected, "..." standing for anything.
bool Matches(std::string_view text, std::string_view expected) {
    constexpr std::string_view gap = "...";
    const std::size_t first = expected.find(gap);
    if (first == std::string_view::npos) {
        return text == expected;
    }
    if (!text.starts_with(expected.substr(0, first))) {
        return false;
    }
    text.remove_prefix(first);
    expected.remove_prefix(first + gap.size());
    for (std::size_t next = expected.find(gap); next != std::string_view::npos; next = expected.find(gap)) {
        const std::size_t found = text.find(expected.substr(0, next));
        if (found == std::string_view::npos) {
            return false;
        }
        text.remove_prefix(found + next);
        expected.remove_prefix(next + gap.size());
    }
    return text.ends_with(expected);
}

std::string DocumentsInShort(const std::string& out) {
    std::string text;
    const nlohmann::json results = nlohmann::json::parse(out);
    for (const nlohmann::json& document : results["documents"]) {
        text += InShort(document) + "\n";
    }
    return text;
}

std::map<std::string, std::string> Contents(const TemporaryFolder& folder) {
    std::map<std::string, std::string> contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path(""))) {
        contents[entry.path()] = entry.is_directory() ? "" : ContentOf(entry.path());
    }
    return contents;
}

void ExpectRefusal(const Outcome& outcome, const Runs& runs) {
    const std::string first = outcome.Errors.substr(0, outcome.Errors.find('\n'));
    EXPECT_EQ(outcome.Out, "");
    EXPECT_TRUE(first.starts_with("quillara: ") && Matches(first, "..." + runs.Reason + "...")) << outcome.Errors;
    EXPECT_EQ(std::ranges::count(outcome.Errors, '\n'), runs.Status) << outcome.Errors;
    EXPECT_EQ(outcome.Errors.find("--help") != std::string::npos, runs.Status == 2) << outcome.Errors;
}

void ExpectDone(const Outcome& outcome, const Runs& runs) {
    const std::string out = runs.IsShort && !outcome.Out.empty() ? DocumentsInShort(outcome.Out) : outcome.Out;
    EXPECT_TRUE(Matches(out, Joined(runs.Out))) << out;
    EXPECT_TRUE(Matches(outcome.Errors, Joined(runs.Errors))) << outcome.Errors;
}

void Expect(const TemporaryFolder& folder, const Runs& runs) {
    const std::string samples = "SAMPLES=" + testing_locations::Sample("") + ";";
    for (const std::string& arguments : runs.Arguments) {
        SCOPED_TRACE(runs.Place + "\n" + arguments);
        const auto before = Contents(folder);
        const Outcome outcome = Quillara(folder, arguments + (runs.IsShort ? " --format json" : ""), samples);
        ASSERT_EQ(outcome.Status, runs.Status) << outcome.Errors;
        runs.Status == 0 ? ExpectDone(outcome, runs) : ExpectRefusal(outcome, runs);
        if (runs.Status != 0) {
            EXPECT_TRUE(Contents(folder) == before) << "files have changed";
        }
        for (const auto& [name, lines] : runs.Files) {
            EXPECT_EQ(ContentOf(folder.Path(name)), Joined(lines));
        }
    }
}

Lines SessionFiles() {
    Lines files;
    for (const auto& entry : std::filesystem::directory_iterator(testing_locations::Sample("../tests/sessions"))) {
        if (entry.path().extension() == ".txt") {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    return files;
}

void MakeFolderOf(const std::string& file) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
}

struct SessionTest : testing::TestWithParam<std::string> {};

TEST_P(SessionTest, GoesAsWritten) {
    const SessionReader reader(GetParam());
    const TemporaryFolder folder;
    for (const auto& [name, lines] : reader.Result().Files) {
        MakeFolderOf(folder.Path(name));
        folder.Put(name, Joined(lines));
    }
    for (const auto& [name, target] : reader.Result().Links) {
        MakeFolderOf(folder.Path(name));
        std::filesystem::create_symlink(target, folder.Path(name));
    }
    for (const Runs& runs : reader.Result().Steps) {
        Expect(folder, runs);
    }
}

INSTANTIATE_TEST_SUITE_P(Sessions, SessionTest, testing::ValuesIn(SessionFiles()),
                         [](const auto& session) { return std::filesystem::path(session.param).stem().string(); });

}  // namespace
