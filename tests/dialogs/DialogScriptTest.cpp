// Runs the scripts in tests/dialogs; the README there tells how they are written.

#include <regex>

#include "tests/dialogs/DialogScript.h"
#include "tests/dialogs/ScriptTexts.h"

namespace dialogtest {
namespace {

using testing_scripts::Line;

/// What is done for each of some rows of cells, all of a new analysis.
struct Case {
    std::vector<Line> Lines;
    std::vector<Line> Rows;
};

/// The cases of a script; the first one is the start of all others.
std::vector<Case> CasesOf(const std::string& path) {
    std::vector<Case> cases(1);
    for (const Line& line : testing_scripts::LinesOf(path)) {
        if (line.Text.starts_with("== ")) {
            cases.emplace_back();
        } else if (line.Text.starts_with("| ")) {
            cases.back().Rows.push_back({line.Place, line.Text.substr(2)});
        } else if (!line.SaysNothing()) {
            cases.back().Lines.push_back(line);
        }
    }
    return cases;
}

/// "1..4" is "1 2 3 4".
std::string Counted(std::string text) {
    const std::regex span(R"((\d+)\.\.(\d+))");
    for (std::smatch found; std::regex_search(text, found, span);) {
        Names numbers;
        for (int number = std::stoi(found[1]); number <= std::stoi(found[2]); ++number) {
            numbers.push_back(std::to_string(number));
        }
        text = found.prefix().str() + Joined(numbers, " ") + found.suffix().str();
    }
    return text;
}

/// "press $1" with the first cell of the row.
std::string Filled(std::string text, const std::string& row) {
    int number = 0;
    for (const std::string& cell : Parts(row, "  ")) {
        const std::regex place("\\$" + std::to_string(++number));
        text = std::regex_replace(text, place, cell == "-" ? "" : cell);
    }
    return Counted(std::regex_replace(text, std::regex("\\\\n"), "\n"));
}

void DoCase(const Case& start, const Case& each, const Line& row) {
    SCOPED_TRACE(row.Place);
    OutputsBench bench;
    for (const std::vector<Line>* lines : {&start.Lines, &each.Lines}) {
        for (const Line& line : *lines) {
            SCOPED_TRACE(line.Place + ": " + line.Text);
            const std::string text = Filled(line.Text, row.Text);
            if (text.find_first_not_of(' ') != std::string::npos) {
                ASSERT_NO_THROW(Do(bench, text));
            }
        }
    }
}

struct DialogScriptTest : testing::TestWithParam<std::string> {};

TEST_P(DialogScriptTest, GoesAsWritten) {
    const std::vector<Case> cases = CasesOf(GetParam());
    for (std::size_t each = 1; each < cases.size(); ++each) {
        for (const Line& row : cases[each].Rows.empty() ? std::vector<Line>(1) : cases[each].Rows) {
            DoCase(cases.front(), cases[each], row);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scripts, DialogScriptTest, testing::ValuesIn(testing_scripts::ScriptsIn({"dialogs"})),
                         testing_scripts::NameOf);

}  // namespace
}  // namespace dialogtest
