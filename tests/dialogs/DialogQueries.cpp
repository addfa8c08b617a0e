#include <array>
#include <map>
#include <optional>
#include <regex>
#include <span>

#include "dialogs/BoundariesDlg.h"
#include "dialogs/CategorySelectionDlg.h"
#include "host/Brushing.h"
#include "host/OleConstant.h"
#include "resources/ControlIds.h"
#include "resources/Dialogs.h"
#include "tests/automation/FaceBench.h"
#include "tests/dialogs/DialogScript.h"
#include "tests/dialogs/ScriptTexts.h"

namespace dialogtest {

namespace {

using quillara::Control;
using quillara::Window;
using Bench = OutputsBench;

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

/// The ids of those controls that are enabled, checked or visible.
std::string Those(Bench& bench, const std::vector<int>& ids, bool Control::*are) {
    return ShownEach(ids, [&](int id) { return bench.Startup().At(id).*are ? std::to_string(id) : ""; });
}

/// "down order": the groups that are enabled; "down(9053)": only some controls of one are.
std::string Enabled(Bench& bench, Text ids) {
    if (!ids.empty()) {
        return Those(bench, Numbers(ids), &Control::Enabled);
    }
    return ShownEach(Groups, [&](const Group& group) {
        const std::string enabled = Those(bench, group.Ids, &Control::Enabled);
        const bool all = Numbers(enabled) == group.Ids;
        return enabled.empty() ? "" : group.Name + (all ? "" : "(" + enabled + ")");
    });
}

std::string OnOneLine(const Names& texts) {
    return std::regex_replace(Joined(texts, " / "), std::regex(" ?\n"), " ");
}

std::string TextsIn(Bench& bench, Text ids) {
    Names texts;
    std::ranges::transform(Numbers(ids), std::back_inserter(texts),
                           [&](int id) { return bench.Startup().At(id).Text; });
    return OnOneLine(texts);
}

/// The controls that have a colour of their own.
std::string Coloured(Bench& bench, Text /*text*/) {
    return ShownEach(DialogTable, [&](const DialogResource& dialog) {
        return ShownEach(dialog.Controls, [&](const ControlResource& control) {
            const Control* found = bench.Startup().Find(control.Id);
            return found != nullptr && found->Colour ? std::to_string(control.Id) : "";
        });
    });
}

/// The Categorization page. "neat of 6 | 10 [12] 1 0 | -": the checked method and how many can be chosen; the fields of
/// the exact and neat numbers, step size and start, in brackets those that take entries; and "at minimum" as "yes",
/// "no" or, greyed, "-", with "boundaries" behind it where that button can be pressed.
std::string Page(Bench& bench, Text /*text*/) {
    constexpr std::array methods{"all", "exact", "neat", "step", "integer", "user"};
    Window& window = bench.Startup();
    std::string chosen;
    int open = 0;
    for (int method = 0; method < std::ssize(methods); ++method) {
        const Control& radio = window.At(DistinctValuesRadio + method);
        chosen += radio.Checked ? methods[static_cast<std::size_t>(method)] : "";
        open += radio.Enabled ? 1 : 0;
    }
    const std::vector fields{ExactCountField, NeatCountField, StepSizeField, StepStartField};
    const std::string numbers = ShownEach(fields, [&](int id) {
        const std::string number = Shown(window.At(id).Number);
        return window.At(id).Enabled ? "[" + number + "]" : number;
    });
    const Control& atMinimum = window.At(StartAtMinimumBox);
    return Shown(chosen.empty() ? "none" : chosen, "of", open, "|", numbers, "|",
                 !atMinimum.Enabled  ? "-"
                 : atMinimum.Checked ? "yes"
                                     : "no") +
           (window.At(BoundariesButton).Enabled ? " boundaries" : "");
}

/// The method of a record and its parameters.
std::string Stored(Bench& bench, Text name) {
    const Drill& record = bench.Record(name);
    return std::to_string(record.Method) + ": " +
           Shown(record.ExactCount, record.NeatCount, record.StepSize, record.StepStart, record.StartAtMin);
}

std::string Bounds(Bench& bench, Text name) {
    const Drill& record = bench.Record(name);
    return ShownEach(std::span(record.UserInterv).first(static_cast<std::size_t>(record.NU)),
                     [](double bound) { return Shown(bound); });
}

/// The last word of a document's title.
std::string TitleOf(const ResultDocument& document) {
    const quillara::GraphDocument* graph = document.Graph();
    const std::string title = graph != nullptr ? graph->Title.front() : document.Spreadsheet()->Title.front();
    return title.substr(title.rfind(' ') + 1);
}

/// "9060.1 a": the documents in windows.
std::string Titles(Bench& bench, Text /*text*/) {
    return ShownEach(bench.Host().Documents().InWindows(), [](const ResultDocument* document) {
        return Shown(Shown(document->Origin().Command) + "." + Shown(document->Origin().Sequence), TitleOf(*document));
    });
}

/// "a 1:2 Missing:1; ": the bars of a brushing graph with their counts, and "up" when drilling up is an option.
std::string CycleOf(Bench& /*bench*/, quillara::BrushingRun& run) {
    std::string text = TitleOf(run.Document);
    for (const BrushRegion& region : run.Regions.Regions()) {
        const std::size_t name = region.Tip.find(' ') + 1;
        const std::size_t count = region.Tip.rfind(' ') + 1;
        text += " " + region.Tip.substr(name, region.Tip.find('\n') - name) + ":" + region.Tip.substr(count);
    }
    return text + (run.Options.size() > 1 ? " up; " : "; ");
}

std::string TitlesIn(Bench& bench, quillara::BrushingRun& /*run*/) {
    return Titles(bench, "") + " ; ";
}

/// "1:0 -1:1": picks a bar, from 0, or none, and an option (0: down, 1: up), a cycle each, then leaves.
template <std::string (*Show)(Bench& bench, quillara::BrushingRun& run)>
std::string Brushed(Bench& bench, Text picks) {
    const Names all = Words(picks);
    std::deque<std::string> left(all.begin(), all.end());
    std::string cycles;
    bench.Host().Services.Brush = [&](quillara::BrushingRun& run) {
        cycles += Show(bench, run);
        if (left.empty()) {
            return false;
        }
        run.Regions.setSelected(std::stoi(left.front()));
        run.Choice = std::stoi(Split(left.front(), ":").second);
        left.pop_front();
        return true;
    };
    bench.Click(BrushButton);
    EXPECT_TRUE(left.empty()) << left.size() << " picks left";
    return cycles;
}

/// Opens the category dialog. Gives its result and what is selected then.
std::string Asked(Bench& bench, Text answers) {
    ExpectAnswers(bench, answers);
    const auto result = CategorySelectionDlg(bench.Analysis()).DoModal(bench.Analysis().GetLibInstance());
    return Shown(result, bench.Analysis().GetSelected());
}

/// Opens the boundaries dialog. Gives its result, and caption and content before each answer.
std::string Edited(Bench& bench, Text answers) {
    std::string shown;
    ExpectAnswers(bench, answers, [&shown](Window& window) {
        const Control& caption = window.At(BoundariesVariableCaption);
        EXPECT_TRUE(caption.Colour.has_value());
        shown += " " + caption.Text + " '" + window.At(BoundariesEdit).Text + "'";
    });
    const auto result = CBoundariesDlg(bench.Analysis()).DoModal(bench.Analysis().GetLibInstance());
    return std::to_string(result) + shown;
}

std::string TextOf(const std::optional<RowRange>& range) {
    if (!range) {
        return "";
    }
    return range->Lower == range->Upper ? " =" + Shown(range->Upper)
                                        : (range->HasLower ? " [" : " (") + Shown(range->Lower) + ", " +
                                              Shown(range->Upper) + (range->HasUpper ? "]" : ")");
}

/// "s: Category 120 Count 60; > one 2 =1; Missing 1": the variable of the category dialog, the columns with their
/// widths, and the rows with their values; ">" marks the selected row.
std::string CategoriesIn(Window& window) {
    const Control& list = window.At(CategoryListControl);
    const Control& caption = window.At(CategoryVariableCaption);
    EXPECT_EQ(list.ExtendedStyle, 33U);
    EXPECT_EQ(list.Colour, 0xff0000U);
    EXPECT_TRUE(caption.Colour.has_value());
    std::string text = caption.Text + ':';
    for (const quillara::ReportColumn& column : list.Columns) {
        text += ' ' + Shown(column.Heading, column.Width);
    }
    for (const quillara::ReportRow& row : list.ReportRows) {
        const bool selected = &row - list.ReportRows.data() == list.Selected;
        text += (selected ? "; > " : "; ") + Joined(row.Cells, " ") + TextOf(row.Range);
    }
    return text;
}

std::string CategoriesOf(Bench& bench, Text /*text*/) {
    std::string text;
    bench.Expect([&](Window& window) { text = CategoriesIn(window); });
    Asked(bench, "");
    return text;
}

std::string NamesOf(const CDrillDown::DrillSet& set) {
    return ShownEach(set, [](const Drill& record) { return record.Name; });
}

/// "Summary,Save": some members; what they give, once where all give the same.
template <typename Call>
std::string OfEach(Text members, Call call) {
    Names given;
    for (Text member : Parts(members, ",")) {
        given.push_back(call(member));
    }
    given.erase(std::unique(given.begin(), given.end()), given.end());
    return Joined(given, ", ");
}

/// "CountMD 0": some members and the value that they are given.
std::string Put(Bench& bench, Text text) {
    const auto [members, value] = Split(text, " ");
    return OfEach(members, [&, given = value](Text member) { return PutByName(bench.Dialog(), member, given); });
}

std::string Get(Bench& bench, Text members) {
    return OfEach(members, [&](Text member) { return GetByName(bench.Dialog(), member); });
}

std::string Recorded(Bench& bench, Text control) {
    const std::unique_ptr<COleAConstant> value(bench.Dialog().RecordControlValue(std::stoi(control)));
    return value == nullptr ? "none" : "'" + value->Value() + "'";
}

// clang-format off
const std::map<std::string, std::string (*)(Bench&, Text)> Queries{
    {"lists",      [](Bench& bench, Text)      { return bench.Lists(); }},
    {"records",    [](Bench& bench, Text)      { return NamesOf(*bench.Analysis().DrillDowns) + " | " + NamesOf(*bench.Analysis().DrillUps); }},
    {"page",       Page},
    {"stored",     Stored},
    {"bounds",     Bounds},
    {"isset",      [](Bench& bench, Text)      { return ShownEach(*bench.Analysis().DrillDowns, [](const Drill& record) { return record.Name + Shown(record.Isset); }); }},
    {"user",       [](Bench& bench, Text text) { return Shown(bench.Record(text).NU, bench.Record(text).CategorySet.size()); }},
    {"enabled",    Enabled},
    {"checked",    [](Bench& bench, Text text) { return Those(bench, Numbers(text), &Control::Checked); }},
    {"visible",    [](Bench& bench, Text text) { return Those(bench, Numbers(text), &Control::Visible); }},
    {"coloured",   Coloured},
    {"text",       TextsIn},
    {"current",    [](Bench& bench, Text)      { return Shown(bench.Analysis().GetCurrentDown(), bench.Analysis().GetCurrentUp(), bench.Analysis().GetSelected()); }},
    {"changed",    [](Bench& bench, Text)      { return Shown(bench.Analysis().DataChanged); }},
    {"variables",  [](Bench& bench, Text)      { return Shown(bench.Analysis().Table.Variables); }},
    {"live",       [](Bench& bench, Text)      { return Shown(bench.Host().LiveAllocations()); }},
    {"description", [](Bench& bench, Text)     { return bench.Dialog().GetDialogDescription(); }},
    {"is-open",    [](Bench& bench, Text)      { return Shown(bench.Host().StartupWindow() != nullptr); }},
    {"calls",      [](Bench& bench, Text)      { return Joined(bench.TakeCalls(), "; "); }},
    {"called",     [](Bench& bench, Text text) { return Shown(std::ranges::count(bench.TakeCalls(), text)); }},
    {"messages",   [](Bench& bench, Text)      { return OnOneLine(bench.TakeMessages()); }},
    {"send",       [](Bench& bench, Text text) { return Shown(bench.Startup().SendCommand(std::stoi(text))); }},
    {"command",    [](Bench& bench, Text text) { return Shown(bench.Command(std::stoi(text))); }},
    {"brush",      Brushed<CycleOf>},
    {"brushing",   Brushed<TitlesIn>},
    {"titles",     Titles},
    {"categories", CategoriesOf},
    {"ask",        Asked},
    {"edit",       Edited},
    {"windows",    [](Bench& bench, Text)      { return bench.Windows(); }},
    {"letters",    [](Bench& bench, Text)      { return bench.Letters(); }},
    {"tracked",    [](Bench& bench, Text)      { return bench.Tracked(); }},
    {"routed",     [](Bench& bench, Text)      { return OnOneLine(std::exchange(bench.Routed, {})); }},
    {"documents",  [](Bench& bench, Text)      { return Shown(bench.Host().Documents().OfAnalysis().size()); }},
    {"exists",     [](Bench& bench, Text text) { return Shown(bench.Analysis().OutputExists(Numbers<unsigned>(text)[0], Numbers<unsigned>(text)[1])); }},
    {"saved",      [](Bench& bench, Text text) { return Shown(bench.Named(text[0]).IsSaved()); }},
    {"update",     [](Bench& bench, Text)      { return Shown(bench.Analysis().AutoUpdate(0)); }},
    {"get",        Get},
    {"put",        Put},
    {"call",       [](Bench& bench, Text name) { return CallByName(FaceOf(bench.Dialog()), name, DispatchMethod).Text(); }},
    {"recorded",   Recorded},
    {"error",      [](Bench&, Text)            { return TakeError(); }},
};
// clang-format on

}  // namespace

std::string Ask(OutputsBench& bench, const std::string& query) {
    const auto [name, rest] = Split(query, " ");
    return Queries.at(name)(bench, rest);
}

}  // namespace dialogtest
