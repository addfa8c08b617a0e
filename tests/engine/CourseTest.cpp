// Runs the courses of actions in the text files of this folder and of tests/navigation; courses.md tells how they are
// written.

#include <algorithm>

#include "tests/Scripts.h"
#include "tests/engine/CourseWords.h"
#include "tests/navigation/ListWindows.h"

namespace drilltest {

namespace {

const std::map<std::string, std::pair<std::int16_t CDrillDown::*, std::int16_t * CDrillDown::*>> ListsOfVariables{
    {"review-categorical", {&CDrillDown::NoRVCategorical, &CDrillDown::RVCategorical}},
    {"review-continuous", {&CDrillDown::NoRVContinuous, &CDrillDown::RVContinuous}},
    {"categorical-of-all-reviews", {&CDrillDown::NoRVCategorical, &CDrillDown::AllReviewVars}},
    {"first-histogram", {&CDrillDown::FirstVarCount, &CDrillDown::FirstVarList}},
    {"second-histogram", {&CDrillDown::SecondVarCount, &CDrillDown::SecondVarList}},
};

/// A bench that goes through a course line by line.
class Course : public DrillBench {
  public:
    explicit Course(Road road) : DrillBench(road) {}

    void Follow(const std::string& line) {
        const auto [action, answer] = testing_scripts::Split(line, " ->");
        const Words words = Split(action, ' ');
        if (Declare(words, line)) {
            IsOpen = false;
            return;
        }
        if (!std::exchange(IsOpen, true)) {
            OpenTable();
        }
        Said.str("");
        Verbs.at(words.at(0))(From(words, 1));
        if (action != line) {
            const std::string said = (Said.view().empty() ? "" : " ") + Said.str();
            EXPECT_EQ(said.substr(0, said.find_last_not_of(' ') + 1), answer);
        }
    }

  private:
    /// "x = 1 2 .", or "x -9999 = 1 2", whose values are taken as they are; "label 1 Male" and "kind Date" of the
    /// variable before; "case-names ann - bob" of the table. False for any other line.
    bool Declare(const Words& words, const std::string& line) {
        using enum quillara::ValueKind;
        if (const auto equals = std::ranges::find(words, "="); equals != words.end()) {
            const std::vector<double> values = ValuesIn({equals + 1, words.end()});
            Input.Cases = static_cast<std::int32_t>(values.size());
            Input.Variables.push_back(equals == words.begin() + 1 ? Numbers(words[0], values)
                                                                  : RawNumbers(words[0], values, ValueOf(words[1])));
        } else if (words[0] == "label") {
            const std::string label = line.substr(line.find(words.at(1)) + words[1].size() + 1);
            Input.Variables.back().Labels[ValueOf(words[1])] = {label, ""};
        } else if (words[0] == "kind") {
            Input.Variables.back().Kind = words.at(1) == "Date" ? Date : TimeOfDay;
        } else if (words[0] == "case-names") {
            Input.CaseNames.assign(words.begin() + 1, words.end());
            std::ranges::replace(Input.CaseNames, "-", "");
        } else {
            return false;
        }
        return true;
    }

    void OpenTable() {
        Open(std::exchange(Input, {}));
        Progress.clear();
        Host().Services.ProgressStarted = [this](std::string_view text, std::int32_t cases) {
            Progress += std::string(text) + std::to_string(cases);
        };
        Host().Services.ProgressEnded = [this] {
            for (const Drill& record : *Analysis().DrillDowns) {
                Progress += ", " + TextOf(record);
            }
        };
    }

    /// "a b / c", or nothing where the user cancels the dialog.
    std::optional<VariableLists> Lists(const Words& words) const {
        if (words == Words{"cancelled"}) {
            return std::nullopt;
        }
        const auto slash = std::ranges::find(words, "/");
        return ListsOf({words.begin(), slash}, slash == words.end() ? Words() : Words(slash + 1, words.end()));
    }

    /// The record that a course calls "x", "step:x" or "review:x".
    Drill& Called(const std::string& name) const {
        const CDrillDown::DrillSet* set = name.starts_with("review:") ? Analysis().Reviews
                                          : name.starts_with("step:") ? Analysis().DrillUps
                                                                      : Analysis().DrillDowns;
        return RecordIn(*set, name.substr(name.find(':') + 1));
    }

    std::string NameOf(int var) const {
        const bool exists = var >= 1 && var <= Analysis().Table.Variables;
        return exists ? Analysis().VariableDisplayName(static_cast<std::int16_t>(var)) : std::to_string(var);
    }

    void SetHistograms(const VariableLists& lists) {
        Analysis().FirstVarCount = static_cast<std::int16_t>(lists.First.size());
        Analysis().SecondVarCount = static_cast<std::int16_t>(lists.Second.size());
        std::ranges::copy(lists.First, Analysis().FirstVarList);
        std::ranges::copy(lists.Second, Analysis().SecondVarList);
    }

    void Reorder(const Words& words) {
        const std::vector<std::int32_t> request = WholeNumbers(From(words, 2));
        const bool steps = words.at(0) == "steps";
        const auto reorder = steps ? &CDrillDown::ReorderDrillUps : &CDrillDown::ReorderDrillDowns;
        (Analysis().*reorder)(request.data(), static_cast<int>(request.size()), std::stoi(words.at(1)));
        for (const Drill& record : steps ? *Analysis().DrillUps : *Analysis().DrillDowns) {
            Said << record.Name;
        }
    }

    /// Reads a case into the text line, with a width of names and from a column on. Says the column behind it and what
    /// stands there, with the number of blanks at its end: "218 ann+2".
    void ReadLine(const Words& words) {
        b1_com& line = Analysis().CaseLine = {{}, static_cast<std::int16_t>(std::stoi(words.at(2)))};
        Analysis().Names.CaseNameWidth = static_cast<std::int16_t>(std::stoi(words.at(1)));
        EXPECT_EQ(Analysis().ReadCase(std::stoi(words.at(0)), Ones().data()), 0);
        const std::string written = std::string(line.Line, CaseLineWidth).c_str() + line.Column - 1;
        const std::size_t end = written.find_last_not_of(' ') + 1;
        Said << line.Column << ' ' << written.substr(0, end) << '+' << written.size() - end;
    }

    /// "lower..upper name, ...", with a "*" behind categories that aren't intervals and the count unless it is 0.
    void SayBounds(const Drill& record) {
        const char* separator = "";
        for (const Categories& category : record.CategorySet) {
            Said << std::exchange(separator, ", ") << category.Lower << ".." << category.Upper << ' ' << category.Name
                 << (category.Kind == 1 ? "" : "*");
            if (category.Count != 0) {
                Said << ':' << category.Count;
            }
        }
    }

    /// The categories that an own record gets in place of an old one, behind what their builder gives unless that is 1.
    void SayCut(const Words& members) {
        Drill record(1, ContinuousVariable, 0, "x");
        record.CategorySet = {{0, 3.0, 7.0, "old", 7.0}};
        Set(record, members);
        record.RebuildCategories();
        const auto build = FactsOf(record.Method).Build;
        if (const int result = build == nullptr ? 1 : (record.*build)(); result != 1) {
            Said << result << ": ";
        }
        SayBounds(record);
    }

    /// The names of the categories, between bars.
    void SayNames(const Drill& record) {
        Said << '|';
        for (const Categories& category : record.CategorySet) {
            Said << category.Name << '|';
        }
    }

    /// "Z0 Y1 | X0": steps and open variables with their Order, and the chosen category where an open one has any.
    void SayOrder() {
        for (const Drill& step : *Analysis().DrillUps) {
            Said << step.Name << step.Order << ' ';
        }
        Said << "| ";
        for (const Drill& open : *Analysis().DrillDowns) {
            Said << open.Name << open.Order << (open.ChosenCategory == -1 ? " " : "(chosen) ");
        }
    }

    /// "2: a b 0": number and entries of a list of variables.
    void SayList(const std::string& name) {
        const auto& [count, list] = ListsOfVariables.at(name);
        Said << Analysis().*count << ':';
        std::for_each_n(Analysis().*list, Analysis().Table.Variables, [this](int var) { Said << ' ' << NameOf(var); });
    }

    /// "1: 0 8 0 9 10": the method of the current record, its type and parameters.
    void SayParameters() {
        int type = -1, count = -1, atMin = -1;
        double step = -1, start = -1;
        Said << Analysis().GetDrillMethod(type, count, atMin, step, start) << ": ";
        Said << type << ' ' << count << ' ' << atMin << ' ' << step << ' ' << start;
    }

    /// A case in which every value is 1.
    std::vector<double> Ones() const { return std::vector(Analysis().Table.Variables + std::size_t{1}, 1.0); }

    /// Whose casewise deletion takes a case in which only this variable is missing.
    void SayDeleted(const std::string& name) {
        std::vector<double> values = Ones();
        Analysis().getmd5(Number(name), &values[static_cast<std::size_t>(Number(name))]);
        Said << (Analysis().SetMissingData(values.data()) == 1 ? "drills " : "")
             << (Analysis().MDReviews(values.data()) == 1 ? "reviews" : "");
    }

    /// How many messages were shown since the last time; all tell that memory is short.
    void SayMessages() {
        const Names messages = TakeMessages();
        EXPECT_THAT(messages, testing::Each(NotEnoughMemory));
        Said << messages.size();
    }

    quillara::DataTable Input;
    bool IsOpen = false;
    ListWindows Windows;
    std::string Progress;  ///< what the displays showed since the last time, and the records at their end
    std::ostringstream Said;  ///< what the present line says behind its arrow

    // clang-format off
    const std::map<std::string, std::function<void(const Words&)>> Verbs{
        {"choose", [this](auto& w) { Said << ChooseLists(Lists(w)); }},
        {"review", [this](auto& w) { Said << ReviewLists(Lists(w)); }},
        {"weigh", [this](auto& w) { Weigh(w.at(0)); }},
        {"moments", [this](auto& w) { Analysis().SetWM(std::stoi(w.at(0))); }},
        {"count-missing", [this](auto& w) { Analysis().SetCountMD(std::stoi(w.at(0))); }},
        {"casewise", [this](auto& w) { Analysis().SetMD(std::stoi(w.at(0))); }},
        {"casewise-reviews", [this](auto& w) { Analysis().SetRVMD(std::stoi(w.at(0))); }},
        {"change", [this](auto&) { Analysis().DataChanged = 1; }},
        {"down", [this](auto& w) { Down(w.at(0), w.at(1)); Said << State(); }},
        {"row", [this](auto& w) { Analysis().SetCurrentDown(Number(w.at(0))); Take(std::stoi(w.at(1))); Said << State(); }},
        {"move", [this](auto& w) { Said << MoveDown(Number(w.at(0)), std::stoi(w.at(1))) << ' ' << Analysis().DrillUps->begin()->ChosenCategory; }},
        {"up", [this](auto& w) { Up(w.at(0)); Said << State(); }},
        {"set", [this](auto& w) { Set(Called(w.at(0)), From(w, 1)); }},
        {"categorize", [this](auto& w) { Categorize(w.at(0), [&](Drill& r) { Set(r, From(w, 1)); }); }},
        {"counts", [this](auto& w) { SetCounts(Called(w.at(0)), ValuesIn(From(w, 1))); }},
        {"interval", [this](auto& w) { Called(w.at(0)).CategorySet = {{1, 1.0, std::stod(w.at(2)), "", std::stod(w.at(1))}}; }},
        {"read", [this](auto&) { Said << Analysis().ReadAfterDrill(0); }},
        {"recount", [this](auto&) { Said << Analysis().ReadBeforeDrill(0); }},
        {"neat", [this](auto&) { Said << Analysis().SetNeatIntervals(); }},
        {"neat-reviews", [this](auto&) { Said << Analysis().SetReviewsIntervals(); }},
        {"continuous", [this](auto&) { Said << Analysis().SetContinuousIntervals(); }},
        {"fill-neat", [this](auto&) { Said << Analysis().FillNeatIntervals(); }},
        {"fill-continuous", [this](auto&) { Said << Analysis().FillContinuousIntervals(); }},
        {"reset", [this](auto&) { Said << Analysis().ResetMembers(); }},
        {"file-changed", [this](auto&) { Said << Analysis().InitializeAfterFileChanged(); }},
        {"cancel-at", [this](auto& w) { CancelAt(std::stoi(w.at(0))); }},
        {"focus", [this](auto& w) { Focus(Number(w.at(0))); }},
        {"point-up", [this](auto& w) { Analysis().SetCurrentUp(Number(w.at(0))); }},
        {"select", [this](auto& w) { Said << Analysis().SetSelectedItem(std::stoi(w.at(0))) << ' ' << Analysis().GetSelected(); }},
        {"place", [this](auto& w) { Said << NameOf(Analysis().SetCurrentUpItem(std::stoi(w.at(0)))); }},
        {"place?", [this](auto&) { Said << Analysis().GetCurrentUpItem(); }},
        {"reorder", [this](auto& w) { Reorder(w); }},
        {"state", [this](auto&) { Said << State(); }},
        {"show", [this](auto& w) { Said << TextOf(Called(w.at(0))); }},
        {"bounds", [this](auto& w) { SayBounds(Called(w.at(0))); }},
        {"size", [this](auto& w) { Said << Called(w.at(0)).CategorySet.size(); }},
        {"cut", [this](auto& w) { SayCut(w); }},
        {"describe-review", [this](auto& w) { Said << Analysis().SetReviewDescriptives(Number(w.at(0)), 1, 2, 3, 4); }},
        {"get", [this](auto& w) { Said << Get(Called(w.at(0)), w.at(1)); }},
        {"order", [this](auto&) { SayOrder(); }},
        {"current", [this](auto&) { Said << NameOf(Analysis().GetCurrentDown()) << ' ' << NameOf(Analysis().GetCurrentUp()); }},
        {"shown", [this](auto&) { Said << Analysis().GetCurrentDrillUpName() << NameOf(Analysis().GetCurrentDrillUp()) << Analysis().GetCurrentVariableName() << NameOf(Analysis().GetCurrentDrillDown()); }},
        {"method", [this](auto&) { Said << Analysis().GetCurrentMethod(); }},
        {"drops", [this](auto& w) { Said << Analysis().HasBeenDrilled(CaseOf(w).data()); }},
        {"reviews", [this](auto&) { Said << Analysis().GetDrillReviewsSize(); }},
        {"selected", [this](auto& w) { Said << Analysis().SelectedVariable(Number(w.at(0))); }},
        {"categorical", [this](auto& w) { Said << Analysis().IsCategoricalVariable(Number(w.at(0))); }},
        {"deleted-for", [this](auto& w) { SayDeleted(w.at(0)); }},
        {"polls", [this](auto&) { Said << Polls(); }},
        {"settings", [this](auto&) { Said << Analysis().GetWM() << ' ' << Analysis().GetCountMD() << ' ' << Analysis().DataChanged; }},
        {"messages", [this](auto&) { SayMessages(); }},
        {"fail", [this](auto& w) { Host().FailAllocation(std::stoi(w.at(0))); }},
        {"live", [this](auto&) { Said << Host().LiveAllocations(); }},
        {"start", [this](auto&) { Said << Host().RunSequence(); }},
        {"names", [this](auto& w) { SayNames(Called(w.at(0))); }},
        {"histograms", [this](auto& w) { SetHistograms(*Lists(w)); }},
        {"parameters", [this](auto&) { SayParameters(); }},
        {"add", [this](auto& w) { Said << Analysis().AddCategories(ValueOf(w.at(1)), Number(w.at(0)), 0.5); }},
        {"take-over", [this](auto& w) { Analysis().NumOfCases = std::stoi(w.at(0)); Said << Analysis().SetNumOfCases(); }},
        {"rename", [this](auto& w) { Editable(*Called(w.at(0)).CategorySet.begin()).Name = w.at(1); }},
        {"missing", [this](auto&) { Said << Analysis().GetCurrentMCount(); }},
        {"analysis", [this](auto&) { Said << Analysis().GetAnalysisName() << ' ' << Analysis().GetAnalysisID(); }},
        {"asked", [this](auto&) { Said << Asked(); }},
        {"plot-histograms", [this](auto&) { Said << Analysis().RV3DHistograms(0, nullptr); }},
        {"save", [this](auto&) { Said << Analysis().DDNSaveData(nullptr); }},
        {"datasheet", [this](auto&) { Said << Analysis().DDNDatasheet(nullptr); }},
        {"progress", [this](auto&) { Said << std::exchange(Progress, {}); }},
        {"lists", [this](auto&) { Said << Windows.Drills(Analysis()); }},
        {"order-lists", [this](auto& w) { Said << Windows.Places(Analysis(), WholeNumbers(w)); }},
        {"list", [this](auto& w) { SayList(w.at(0)); }},
        {"read-line", [this](auto& w) { ReadLine(w); }},
        {"name", [this](auto& w) { Said << Analysis().SetCategoriesName(Number(w.at(0))); }},
        {"name-review", [this](auto& w) { Said << Analysis().SetReviewCategoriesName(Number(w.at(0))); }},
        {"change-nothing", [this](auto&) { Said << Analysis().SetCurrentCategories(1, 2, 3, 4, 5); }},
    };
    // clang-format on
};

struct CourseTest : testing::TestWithParam<std::string> {};

TEST_P(CourseTest, GoesAsWritten) {
    for (const Road road : {Road::CaseByCase, Road::Columns, Road::Quick}) {
        Course course{road};
        for (const testing_scripts::Line& line : testing_scripts::LinesOf(GetParam())) {
            SCOPED_TRACE(line.Place + ": " + line.Text);
            if (!line.SaysNothing()) {
                ASSERT_NO_THROW(course.Follow(line.Text));
            }
        }
    }
}
INSTANTIATE_TEST_SUITE_P(Courses, CourseTest, testing::ValuesIn(testing_scripts::ScriptsIn({"engine", "navigation"})),
                         testing_scripts::NameOf);

}  // namespace

}  // namespace drilltest
