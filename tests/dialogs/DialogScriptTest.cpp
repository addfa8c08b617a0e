// Runs the scripts in tests/dialogs; the README there tells how they are written.

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "dialogs/CategorySelectionDlg.h"
#include "host/Brushing.h"
#include "tests/Locations.h"
#include "tests/automation/OutputsBench.h"

namespace dialogtest {
namespace {

/// "a<between>b" as a and b; b is empty when there is none between.
std::pair<std::string, std::string> Split(const std::string& text, const std::string& between) {
    const std::size_t at = text.find(between);
    return at == std::string::npos ? std::pair(text, std::string())
                                   : std::pair(text.substr(0, at), text.substr(at + between.size()));
}

std::string Trimmed(const std::string& text) {
    return std::regex_replace(text, std::regex("^ +| +$"), "");
}

std::vector<std::string> Cells(const std::string& text, const std::string& between) {
    const std::regex separator(between);
    std::vector<std::string> cells(std::sregex_token_iterator(text.begin(), text.end(), separator, -1), {});
    std::ranges::transform(cells, cells.begin(), Trimmed);
    return cells;
}

Names Words(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

std::vector<int> Ids(const std::string& text) {
    std::vector<int> ids;
    std::ranges::transform(Words(text), std::back_inserter(ids), [](const std::string& id) { return std::stoi(id); });
    return ids;
}

std::string Joined(const Names& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : " / ") + text;
    }
    return std::regex_replace(joined, std::regex(" ?\n"), " ");
}

/// "sex=1,2,." or "town=x,y,z".
quillara::Variable VariableOf(const std::string& text) {
    const auto [name, list] = Split(text, "=");
    std::vector<double> numbers;
    std::vector<std::optional<std::string>> texts;
    for (const std::string& value : Cells(list, ",")) {
        texts.emplace_back(value);
        numbers.push_back(value == "." ? quillara::Missing : std::strtod(value.c_str(), nullptr));
    }
    const bool areTexts = list.find_first_not_of("0123456789.,-") != std::string::npos;
    return areTexts ? quillara::Texts(name, texts) : quillara::Numbers(name, numbers);
}

/// Controls that are enabled together.
struct Group {
    const char* Name;
    std::vector<int> Ids;
};

const std::vector<Group> Groups{
    {"down", {9053, 9103, 9056, 9060, 9112, 9119, 9061}},
    {"up", {9054, 9057, 9058}},
    {"order", {9055}},
    {"descriptives", {9059}},
    {"save", {9086}},
    {"reviews", {9082, 9083, 9122, 9123}},
    {"continuous", {9118, 9114, 9115, 9116, 9117, 9081, 9084}},
    {"scatter", {9100}},
    {"settings", {203, 201, 202, 9128}},
    {"weights", {204}},
    {"missing", {9127}},
    {"always", {9080, 9109, 9051, 9110, 9113, 9107, 9106, 2, 10710, 9050}},
};

/// The last word of a document's title.
std::string TitleOf(const ResultDocument& document) {
    const quillara::GraphDocument* graph = document.Graph();
    const std::string title = graph != nullptr ? graph->Title.front() : document.Spreadsheet()->Title.front();
    return title.substr(title.rfind(' ') + 1);
}

/// "a 1:2 Missing:1; ": the bars of a brushing graph with their counts, and "up" when drilling up is an option.
std::string CycleOf(quillara::BrushingRun& run) {
    std::string text = TitleOf(run.Document);
    for (const BrushRegion& region : run.Regions.Regions()) {
        const std::size_t name = region.Tip.find(' ') + 1;
        const std::size_t count = region.Tip.rfind(' ') + 1;
        text += " " + region.Tip.substr(name, region.Tip.find('\n') - name) + ":" + region.Tip.substr(count);
    }
    return text + (run.Options.size() > 1 ? " up; " : "; ");
}

/// Does the lines of a script and compares what they expect.
class Script : public OutputsBench {
  public:
    void Do(const std::string& line) {
        const auto [asked, expected] = Split(line, " =");
        const auto [verb, rest] = Split(Trimmed(asked), " ");
        if (asked == line && Verbs.contains(verb)) {
            Verbs.at(verb)(rest);
        } else if (asked != line && Queries.contains(verb)) {
            EXPECT_EQ(Trimmed(Queries.at(verb)(rest)), Trimmed(expected));
        } else {
            ADD_FAILURE() << "unknown: " << line;
        }
    }

  private:
    void OpenTable(const std::string& text) {
        std::vector<quillara::Variable> variables;
        std::ranges::transform(Words(text), std::back_inserter(variables), VariableOf);
        DialogBench::Open(std::move(variables));
        TakeDocuments();
    }
    Answer Chosen(const std::string& text) {
        const auto [categorical, continuous] = Split(text, ";");
        return Variables(Words(categorical), Words(continuous));
    }
    /// "boundaries 2 4": what a user does in a window.
    Answer AnswerOf(const std::string& text) {
        const auto [what, rest] = Split(text, " ");
        return what == "category"     ? Category(rest)
               : what == "boundaries" ? dialogtest::Boundaries(rest)
               : what == "variables"  ? Chosen(rest)
               : what == "row"
                   ? Answer([row = rest](auto& window) { window.ClickRow(CategoryListControl, std::stoi(row)); })
               : what == "double"
                   ? Answer([row = rest](auto& window) { window.DoubleClickRow(CategoryListControl, std::stoi(row)); })
               : what == "ok" ? Ok()
                              : Cancel();
    }
    /// "9056: category 2 / cancel": an id, and answers.
    void PressWith(const std::string& text) {
        const auto [id, answers] = Split(text, ":");
        for (const std::string& answer : answers.empty() ? Names() : Cells(answers, " / ")) {
            Expect(AnswerOf(answer));
        }
        Click(std::stoi(id));
    }
    /// Has a line done when the host tells of a call.
    void When(const std::string& text) {
        const auto [awaited, line] = Split(text, ": ");
        OnCall = [this, awaited = awaited, line = line](std::string_view call) {
            if (call == awaited) {
                Do(line);
            }
        };
    }
    void CloseDocument(const std::string& text) {
        const auto [letter, choice] = Split(text, " ");
        choice.empty() ? Named(letter[0]).Close() : Named(letter[0]).CloseWithChoice(std::stoi(choice));
        Host().Documents().LetHiddenGo();
    }
    /// "down order": the groups that are enabled; "down(9053)": only some controls of one are.
    std::string EnabledGroups() {
        std::string text;
        for (const Group& group : Groups) {
            const std::string enabled = DialogBench::Enabled(group.Ids);
            const bool all = Ids(enabled) == group.Ids;
            text += enabled.empty() ? "" : std::string(group.Name) + (all ? " " : "(" + enabled + ") ");
        }
        return text;
    }
    /// Method, ExactCount, NeatCount, StepSize, StepStart and StartAtMin of a record.
    std::string Stored(const std::string& name) {
        const Drill& record = Record(name);
        std::ostringstream text;
        text << record.Method << ": " << record.ExactCount << ' ' << record.NeatCount << ' ' << record.StepSize << ' '
             << record.StepStart << ' ' << record.StartAtMin;
        return text.str();
    }
    std::string Issets() {
        std::string text;
        for (const Drill& record : *Analysis().DrillDowns) {
            text += record.Name + std::to_string(record.Isset) + " ";
        }
        return text;
    }
    std::string CurrentAndSelected() {
        return std::to_string(Analysis().GetCurrentDown()) + " " + std::to_string(Analysis().GetCurrentUp()) + " " +
               std::to_string(Analysis().GetSelected());
    }
    std::string CountPasses() { return std::to_string(std::ranges::count(Cells(TakeTrace(), ";"), "Pass")); }
    std::string TextsOf(const std::string& ids) {
        Names texts;
        std::ranges::transform(Ids(ids), std::back_inserter(texts), [this](int id) { return DialogBench::TextOf(id); });
        return Joined(texts);
    }
    /// "1:0 -1:1": picks a bar, from 0, or none, and an option (0: down, 1: up), a cycle each, then leaves.
    std::string Brushed(const std::string& picks, const std::function<std::string(quillara::BrushingRun&)>& show) {
        const Names all = Words(picks);
        std::deque<std::string> left(all.begin(), all.end());
        std::string cycles;
        Host().Services.Brush = [&](quillara::BrushingRun& run) {
            cycles += show(run);
            if (left.empty()) {
                return false;
            }
            run.Regions.setSelected(std::stoi(left.front()));
            run.Choice = std::stoi(Split(left.front(), ":").second);
            left.pop_front();
            return true;
        };
        Click(BrushButton);
        EXPECT_TRUE(left.empty()) << left.size() << " picks left";
        return cycles;
    }
    /// "9060.1 a": the documents in windows.
    std::string Titles() {
        std::string text;
        for (const ResultDocument* document : Host().Documents().InWindows()) {
            text += std::to_string(document->Origin().Command) + "." + std::to_string(document->Origin().Sequence) +
                    " " + TitleOf(*document) + " ";
        }
        return text;
    }
    /// Makes categories by a method, of three intervals, steps of two, or with the boundary 3.
    void Categorize(const std::string& text) {
        Drill& record = Record(Split(text, " ").first);
        record.Method = static_cast<std::int16_t>(std::stoi(Split(text, " ").second));
        record.ExactCount = record.NeatCount = 3;
        record.StepSize = 2;
        record.UserInterv[0] = 3;
        record.NU = 1;
        record.RebuildCategories();
    }
    /// Opens the category dialog and answers it. Gives its result and what is selected then.
    std::string Asked(Answer answer) {
        Expect(std::move(answer));
        const auto result = CategorySelectionDlg(Analysis()).DoModal(Analysis().GetLibInstance());
        return std::to_string(result) + " " + std::to_string(Analysis().GetSelected());
    }
    std::string Categories() {
        std::string text;
        Asked([&](quillara::Window& window) { text = CategoriesIn(window); });
        return text;
    }
    /// Gives the first category of a variable, or all when told so, a count.
    void Count(const std::string& text) {
        const auto [variable, count] = Split(text, " ");
        for (const ::Categories& category : Record(variable).CategorySet) {
            Editable(category).Count = std::stod(count);
            if (!count.ends_with(" all")) {
                break;
            }
        }
    }
    void TypeInto(const std::string& text) {
        const auto [id, number] = Split(text, " ");
        TypeNumber(std::stoi(id), std::stod(number));
    }

    using Text = const std::string&;
    // clang-format off
    const std::map<std::string, std::function<void(Text)>> Verbs{
        {"open",      [this](Text text) { OpenTable(text); }},
        {"choose",    [this](Text text) { Click(DrillVariablesButton, {Chosen(text)}); }},
        {"review",    [this](Text text) { Click(ReviewVariablesButton, {Chosen(text)}); }},
        {"press",     [this](Text text) { PressWith(text); }},
        {"pick",      [this](Text text) { Pick(text); }},
        {"pick-up",   [this](Text text) { PickUp(text); }},
        {"down",      [this](Text text) { Down(Split(text, " ").first, Split(text, " ").second); }},
        {"up",        [this](Text text) { Up(text); }},
        {"type",      [this](Text text) { TypeInto(text); }},
        {"clear",     [this](Text text) { Startup().At(std::stoi(text)).HasNumber = false; }},
        {"weigh",     [this](Text text) { Weigh(text); }},
        {"weighted",  [this](Text text) { Analysis().CaseWeight.Active = static_cast<std::int16_t>(std::stoi(text)); }},
        {"changed",   [this](Text text) { Analysis().DataChanged = static_cast<std::int16_t>(std::stoi(text)); }},
        {"isset",     [this](Text text) { Analysis().SetAllIsset(std::stoi(text)); }},
        {"selected",  [this](Text text) { Analysis().SetSelected(static_cast<std::int16_t>(std::stoi(text))); }},
        {"method",    [this](Text text) { Record(Split(text, " ").first).Method = static_cast<std::int16_t>(std::stoi(Split(text, " ").second)); }},
        {"controls",  [this](Text)      { Dialog().UpdateControls(); }},
        {"send",      [this](Text text) { Startup().SendCommand(std::stoi(text)); }},
        {"read",      [this](Text)      { Analysis().ReadAfterDrill(0); }},
        {"automated", [this](Text text) { Host().SetAutomated(text == "yes"); }},
        {"ask",       [this](Text)      { Dialog().AutomationInteractive = 1; }},
        {"forget",    [this](Text)      { TakeTrace(); Routed.clear(); }},
        {"close",     [this](Text text) { CloseDocument(text); }},
        {"minimize",  [this](Text text) { Named(text[0]).Minimize(); }},
        {"end",       [this](Text)      { Analysis().BeforeClose(); }},
        {"next",      [this](Text text) { Analysis().SetNextOutputID(static_cast<unsigned>(Ids(text)[0]), static_cast<unsigned>(Ids(text)[1])); }},
        {"when",      [this](Text text) { When(text); }},
        {"focus",     [this](Text text) { Focus(text); }},
        {"nobody",    [this](Text)      { Analysis().SetCurrentDown(-1); }},
        {"intervals", [this](Text text) { Categorize(text); }},
        {"count",     [this](Text text) { Count(text); }},
        {"missing",   [this](Text text) { Analysis().SetCountMD(static_cast<std::int16_t>(std::stoi(text))); }},
        {"fail",      [this](Text text) { Host().FailAllocation(std::stoi(text)); }},
        {"frequency", [this](Text)      { Analysis().DDNFrequency(nullptr); }},
    };
    const std::map<std::string, std::function<std::string(Text)>> Queries{
        {"lists",     [this](Text)      { return Lists(); }},
        {"page",      [this](Text)      { return Page(); }},
        {"stored",    [this](Text text) { return Stored(text); }},
        {"isset",     [this](Text)      { return Issets(); }},
        {"user",      [this](Text text) { return std::to_string(Record(text).NU) + " " + std::to_string(Record(text).CategorySet.size()); }},
        {"enabled",   [this](Text text) { return text.empty() ? EnabledGroups() : Enabled(Ids(text)); }},
        {"checked",   [this](Text text) { return Checked(Ids(text)); }},
        {"visible",   [this](Text text) { return Startup().At(std::stoi(text)).Visible ? "yes" : "no"; }},
        {"text",      [this](Text text) { return TextsOf(text); }},
        {"current",   [this](Text)      { return CurrentAndSelected(); }},
        {"changed",   [this](Text)      { return std::to_string(Analysis().DataChanged); }},
        {"calls",     [this](Text)      { return TakeTrace(); }},
        {"passes",    [this](Text)      { return CountPasses(); }},
        {"messages",  [this](Text)      { return Joined(TakeMessages()); }},
        {"send",      [this](Text text) { return std::to_string(Startup().SendCommand(std::stoi(text))); }},
        {"command",   [this](Text text) { return std::to_string(Command(std::stoi(text))); }},
        {"brush",     [this](Text text) { return Brushed(text, CycleOf); }},
        {"brushing",  [this](Text text) { return Brushed(text, [this](auto&) { return Titles() + "; "; }); }},
        {"titles",    [this](Text)      { return Titles(); }},
        {"categories", [this](Text)     { return Categories(); }},
        {"ask",       [this](Text text) { return Asked(AnswerOf(text)); }},
        {"windows",   [this](Text)      { return Windows(); }},
        {"letters",   [this](Text)      { return Letters(); }},
        {"tracked",   [this](Text)      { return Tracked(); }},
        {"routed",    [this](Text)      { return Joined(std::exchange(Routed, {})); }},
        {"documents", [this](Text)      { return std::to_string(Host().Documents().OfAnalysis().size()); }},
        {"exists",    [this](Text text) { return Analysis().OutputExists(static_cast<unsigned>(Ids(text)[0]), static_cast<unsigned>(Ids(text)[1])) ? "yes" : "no"; }},
        {"saved",     [this](Text text) { return Named(text[0]).IsSaved() ? "yes" : "no"; }},
        {"called",    [this](Text text) { return TakeTrace().find(text) == std::string::npos ? "no" : "yes"; }},
        {"update",    [this](Text)      { return std::to_string(Analysis().AutoUpdate(0)); }},
    };
    // clang-format on
};

struct Line {
    std::string Place;
    std::string Text;
};

/// What is done for each of some rows of cells, all of a new analysis.
struct Case {
    std::vector<Line> Lines;
    std::vector<Line> Rows;
};

/// The cases of a script; the first one is the start of all others.
std::vector<Case> Read(const std::string& path) {
    std::vector<Case> cases(1);
    std::ifstream file(path);
    int number = 0;
    for (std::string text; std::getline(file, text);) {
        const Line line{path + ":" + std::to_string(++number), text};
        if (text.starts_with("== ")) {
            cases.emplace_back();
        } else if (text.starts_with("| ")) {
            cases.back().Rows.push_back({line.Place, text.substr(2)});
        } else if (!text.empty() && text.front() != '#') {
            cases.back().Lines.push_back(line);
        }
    }
    return cases;
}

/// "press $1" with the first cell of the row.
std::string Filled(std::string text, const Line& row) {
    const auto cells = Cells(row.Text, " {2,}");
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        text = std::regex_replace(text, std::regex("\\$" + std::to_string(cell + 1)),
                                  cells[cell] == "-" ? "" : cells[cell]);
    }
    return text;
}

void DoCase(const Case& start, const Case& each, const Line& row) {
    SCOPED_TRACE(row.Place);
    Script script;
    for (const std::vector<Line>* lines : {&start.Lines, &each.Lines}) {
        for (const Line& line : *lines) {
            SCOPED_TRACE(line.Place + ": " + line.Text);
            const std::string text = Filled(line.Text, row);
            if (text.find_first_not_of(' ') != std::string::npos) {
                ASSERT_NO_THROW(script.Do(text));
            }
        }
    }
}

Names ScriptFiles() {
    Names files;
    for (const auto& entry : std::filesystem::directory_iterator(testing_locations::Sample("../tests/dialogs"))) {
        if (entry.path().extension() == ".txt") {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    return files;
}

struct DialogScriptTest : testing::TestWithParam<std::string> {};

TEST_P(DialogScriptTest, GoesAsWritten) {
    const std::vector<Case> cases = Read(GetParam());
    for (std::size_t each = 1; each < cases.size(); ++each) {
        for (const Line& row : cases[each].Rows.empty() ? std::vector<Line>(1) : cases[each].Rows) {
            DoCase(cases.front(), cases[each], row);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scripts, DialogScriptTest, testing::ValuesIn(ScriptFiles()),
                         [](const auto& script) { return std::filesystem::path(script.param).stem().string(); });

}  // namespace
}  // namespace dialogtest
