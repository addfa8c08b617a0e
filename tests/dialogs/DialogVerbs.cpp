#include <map>
#include <optional>
#include <tuple>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/dialogs/DialogScript.h"
#include "tests/dialogs/ScriptTexts.h"
#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"

namespace dialogtest {

namespace {

using quillara::Window;
using Bench = OutputsBench;

short Short(Text text) {
    return static_cast<short>(std::stoi(text));
}

/// What the host answers to the next cycle of brushing in place of the real one: bar and action.
std::optional<std::pair<int, int>> NextPick;

// Answers: what a user does in modal windows

void Enter(Window& window, int edit, Text text) {
    window.Type(edit, text);
    window.Click(OkCommand);
}

void TakeRow(Window& window, int list, Text name) {
    window.ClickText(list, name);
    window.Click(OkCommand);
}

void TakeWeight(Bench& /*bench*/, Window& window, Text name) {
    using Dialog = quillara::WeightDialog;
    if (window.At(Dialog::NoWeight).Checked) {
        window.Click(Dialog::NoWeight);
    }
    TakeRow(window, Dialog::VariableList, name);
}

/// "a b ; c".
void TakeVariables(Bench& bench, Window& window, Text text) {
    const auto numbers = [&](Text names) {
        std::vector<short> all;
        std::ranges::transform(Words(names), std::back_inserter(all), [&](Text name) { return bench.Number(name); });
        return all;
    };
    quillara::ChooseVariables(window, numbers(Split(text, ";").first), numbers(Split(text, ";").second));
}

void Place(Window& window, int row) {
    window.ClickRow(CurrentOrderList, row);
    window.Click(PlaceButton);
}

void TryStartupDialog(Bench& bench, Window& /*window*/, Text ids) {
    for (const int id : Numbers(ids)) {
        EXPECT_THROW(bench.Startup().Click(id), quillara::UsageError);
    }
}

// clang-format off
const std::map<std::string, void (*)(Bench&, Window&, Text)> Answers{
    {"ok",         [](Bench&, Window& window, Text) { window.Click(OkCommand); }},
    {"cancel",     [](Bench&, Window& window, Text) { window.Click(CancelCommand); }},
    {"category",   [](Bench&, Window& window, Text name) { TakeRow(window, CategoryListControl, name); }},
    {"row",        [](Bench&, Window& window, Text row) { window.ClickRow(CategoryListControl, std::stoi(row)); }},
    {"double",     [](Bench&, Window& window, Text row) { window.DoubleClickRow(CategoryListControl, std::stoi(row)); }},
    {"place",      [](Bench&, Window& window, Text row) { Place(window, std::stoi(row)); }},
    {"boundaries", [](Bench&, Window& window, Text list) { Enter(window, BoundariesEdit, list); }},
    {"file",       [](Bench&, Window& window, Text name) { Enter(window, quillara::OpenDataDialog::Path, testing_locations::Sample(name)); }},
    {"weight",     TakeWeight},
    {"variables",  TakeVariables},
    {"blocked",    TryStartupDialog},
};
// clang-format on

// Verbs

/// "sex=1,2,." or "town=x,y,z".
quillara::Variable VariableOf(Text text) {
    const auto [name, list] = Split(text, "=");
    std::vector<double> numbers;
    std::vector<std::optional<std::string>> texts;
    for (Text value : Parts(list, ",")) {
        texts.emplace_back(value);
        numbers.push_back(value == "." ? quillara::Missing : std::strtod(value.c_str(), nullptr));
    }
    const bool areTexts = list.find_first_not_of("0123456789.,-") != std::string::npos;
    return areTexts ? quillara::Texts(name, texts) : quillara::Numbers(name, numbers);
}

void Open(Bench& bench, Text text) {
    std::vector<quillara::Variable> variables;
    std::ranges::transform(Words(text), std::back_inserter(variables), VariableOf);
    bench.Open(quillara::TableOf(std::move(variables)));
}

/// "t 2 two; the second": a new analysis of the table, in which a value has a label and a description.
void Label(Bench& bench, Text text) {
    const auto [name, valueAndLabel] = Split(text, " ");
    const auto [value, label] = Split(valueAndLabel, " ");
    quillara::DataTable table = bench.Table();
    quillara::Variable& variable = table.Variables[table.IndexOf(name)];
    variable.Labels[std::stod(value)] = {Split(label, "; ").first, Split(label, "; ").second};
    bench.Open(std::move(table));
}

/// "9056: category 2 / cancel": a control, and the answers to the windows that open.
void Press(Bench& bench, Text text) {
    const auto [id, answers] = Split(text, ":");
    ExpectAnswers(bench, answers);
    bench.Click(std::stoi(id));
}

void Pick(Bench& bench, Text variable) {
    bench.ClickText(DrillDownListControl, variable);
}

void PickUp(Bench& bench, Text row) {
    bench.ClickText(DrillUpListControl, row);
}

void Down(Bench& bench, Text text) {
    Pick(bench, Split(text, " ").first);
    Press(bench, "9056: category " + Split(text, " ").second);
}

void Up(Bench& bench, Text row) {
    PickUp(bench, row);
    bench.Click(UpButton);
}

/// Has a line done when the host tells of a call.
void When(Bench& bench, Text text) {
    const auto [awaited, line] = Split(text, ": ");
    bench.OnCall = [&bench, awaited = awaited, line = line](std::string_view call) {
        if (call == awaited) {
            Do(bench, line);
        }
    };
}

/// Forgets what has happened until now.
void Forget(Bench& bench, Text /*text*/) {
    bench.TakeCalls();
    bench.Routed.clear();
}

/// "A 2": closes a document, with an answer to the host's question.
void Close(Bench& bench, Text text) {
    const auto [letter, choice] = Split(text, " ");
    ResultDocument& document = bench.Named(letter[0]);
    choice.empty() ? document.Close() : document.CloseWithChoice(std::stoi(choice));
    bench.Host().Documents().LetHiddenGo();
}

/// Makes a variable the current one, with fresh counts.
void Focus(Bench& bench, Text variable) {
    bench.Analysis().SetCurrentDown(bench.Number(variable));
    bench.Analysis().ReadAfterDrill(0);
    bench.Analysis().ReadBeforeDrill(0);
    bench.Analysis().SetSelected(-1);
}

/// "x 2": makes categories by a method, of three intervals, steps of two, or with the boundary 3.
void Categorize(Bench& bench, Text text) {
    Drill& record = bench.Record(Split(text, " ").first);
    record.Method = std::stoi(Split(text, " ").second);
    record.ExactCount = record.NeatCount = 3;
    record.StepSize = 2;
    record.UserInterv[0] = 3;
    record.NU = 1;
    record.RebuildCategories();
}

/// "x 100": gives the first category of a variable, or "all" of them, a count.
void Count(Bench& bench, Text text) {
    const auto [variable, count] = Split(text, " ");
    for (const Categories& category : bench.Record(variable).CategorySet) {
        Editable(category).Count = std::stod(count);
        if (!count.ends_with(" all")) {
            break;
        }
    }
}

/// The option has been forgotten when the dialog opens again.
void RunAgain(Bench& bench, Text /*text*/) {
    bench.Analysis().StandAloneResults = 0;
    ASSERT_TRUE(bench.Host().RunSequence());
}

// clang-format off
const std::map<std::string, void (*)(Bench&, Text)> Verbs{
    {"open",      Open},
    {"label",     Label},
    {"choose",    [](Bench& bench, Text text) { Press(bench, "9050: variables " + text); }},
    {"review",    [](Bench& bench, Text text) { Press(bench, "9080: variables " + text); }},
    {"press",     Press},
    {"pick",      Pick},
    {"pick-up",   PickUp},
    {"down",      Down},
    {"up",        Up},
    {"drag",      [](Bench& bench, Text text) { bench.Startup().Drag(Numbers(text)[0], Numbers(text)[1]); }},
    {"type",      [](Bench& bench, Text text) { bench.Startup().TypeNumber(Numbers(text)[0], Numbers<double>(text)[1]); }},
    {"clear",     [](Bench& bench, Text text) { bench.Startup().At(std::stoi(text)).HasNumber = false; }},
    {"weigh",     [](Bench& bench, Text text) { Press(bench, "202: weight " + text); }},
    {"weighted",  [](Bench& bench, Text text) { bench.Analysis().CaseWeight.Active = Short(text); }},
    {"changed",   [](Bench& bench, Text text) { bench.Analysis().DataChanged = Short(text); }},
    {"isset",     [](Bench& bench, Text text) { bench.Analysis().SetAllIsset(Short(text)); }},
    {"selected",  [](Bench& bench, Text text) { bench.Analysis().SetSelected(Short(text)); }},
    {"method",    [](Bench& bench, Text text) { bench.Record(Split(text, " ").first).Method = Short(Split(text, " ").second); }},
    {"controls",  [](Bench& bench, Text)      { bench.Dialog().UpdateControls(); }},
    {"send",      [](Bench& bench, Text text) { bench.Startup().SendCommand(std::stoi(text)); }},
    {"read",      [](Bench& bench, Text)      { bench.Analysis().ReadAfterDrill(0); }},
    {"automated", [](Bench& bench, Text text) { bench.Host().SetAutomated(text == "yes"); }},
    {"ask",       [](Bench& bench, Text)      { bench.Dialog().AutomationInteractive = 1; }},
    {"forget",    Forget},
    {"close",     Close},
    {"minimize",  [](Bench& bench, Text text) { bench.Named(text[0]).Minimize(); }},
    {"end",       [](Bench& bench, Text)      { bench.Analysis().BeforeClose(); }},
    {"again",     RunAgain},
    {"next",      [](Bench& bench, Text text) { bench.Analysis().SetNextOutputID(Numbers<unsigned>(text)[0], Numbers<unsigned>(text)[1]); }},
    {"update",    [](Bench& bench, Text)      { bench.Analysis().AutoUpdate(0); }},
    {"when",      When},
    {"focus",     Focus},
    {"nobody",    [](Bench& bench, Text)      { bench.Analysis().SetCurrentDown(-1); }},
    {"intervals", Categorize},
    {"count",     Count},
    {"missing",   [](Bench& bench, Text text) { bench.Analysis().SetCountMD(Short(text)); }},
    {"fail",      [](Bench& bench, Text text) { bench.Host().FailAllocation(std::stoi(text)); }},
    {"frequency", [](Bench& bench, Text)      { bench.Analysis().DDNFrequency(nullptr); }},
    {"cycle",     [](Bench&, Text text)       { NextPick = std::pair(Numbers(text)[0], Numbers(text)[1]); }},
};
// clang-format on

}  // namespace

void ExpectAnswers(Bench& bench, Text answers, const Answer& look) {
    for (Text answer : Parts(answers, " / ")) {
        bench.Expect([&bench, look, answer](Window& window) {
            look(window);
            const auto [what, rest] = Split(answer, " ");
            Answers.at(what)(bench, window, rest);
        });
    }
}

void Do(OutputsBench& bench, const std::string& line) {
    if (const auto [query, expected] = Split(line, " ="); query != line) {
        EXPECT_EQ(Trimmed(Ask(bench, Trimmed(query))), Trimmed(expected));
    } else {
        const auto [verb, rest] = Split(line, " ");
        Verbs.at(verb)(bench, rest);
    }
}

}  // namespace dialogtest

// Ends of brushing that no user brings about, but a host may: the linker has this answer each cycle that the dialog
// asks for.

std::int16_t WrappedCycle(CDrillDown* analysis, int* item,
                          int* action) __asm__("__wrap__ZN10CDrillDown11DDNBrushingEPiS0_");
std::int16_t RealCycle(CDrillDown* analysis, int* item,
                       int* action) __asm__("__real__ZN10CDrillDown11DDNBrushingEPiS0_");

std::int16_t WrappedCycle(CDrillDown* analysis, int* item, int* action) {
    if (const auto pick = std::exchange(dialogtest::NextPick, std::nullopt)) {
        std::tie(*item, *action) = *pick;
        return 1;
    }
    return RealCycle(analysis, item, action);
}
