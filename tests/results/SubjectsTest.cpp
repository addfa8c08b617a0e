// What every result says that it is about, right before it is handed over.

#include <new>

#include "results/texts/ResultSubjects.h"
#include "tests/results/ResultsBench.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace drilltest {

class Subjects : public ResultsBench {
  protected:
    void SetUp() override {
        quillara::Variable group = Numbers("group", {1, 2, 2, 3, NA});
        group.Labels = {{2, {"A label of more than twenty bytes", ""}}};
        Open({group, Numbers("y", {1, 1, 2, 2, 2}), Numbers("z", {1, 2, 3, 4, 5})});
        Host().Services.TakeDocument = [this](quillara::ResultDocument& document) {
            std::visit([this](const auto& content) { Said += TextOf(content.About) + "; "; }, document.Content());
        };
        Choose({"group", "y"}, {"z"});
        Review({"group"}, {"y", "z"});
        for (Drill* record : {&Record("z"), &RecordIn(*Analysis().Reviews, "y"), &RecordIn(*Analysis().Reviews, "z")}) {
            record->Method = IntegerCategories;
        }
        Analysis().DataChanged = 1;
    }
    /// "drill 1 one,two,Missing 2"; a subject a result.
    static std::string TextOf(const auto& subject) {
        std::string text = subject.Side == ResultSide::Drill    ? "drill"
                           : subject.Side == ResultSide::Review ? "review"
                                                                : "?";
        for (const auto& variable : subject.Variables) {
            text += ' ' + std::to_string(variable.Number);
            const char* separator = " ";
            for (const std::string& name : variable.Categories) {
                text += std::exchange(separator, ",") + name;
            }
            text += variable.HasMissing ? "+" : "";
        }
        return text;
    }

    std::string Said;
};

TEST_F(Subjects, TellSideVariablesAndWholeNamesOfCategories) {
    const std::string group = "1 1,A label of more than twenty bytes,3";
    const std::string drill = "drill " + group + "+; drill 2 1,2; drill 3 1,2,3,4,5; ";
    const std::string review = "review " + group + "+; review 2 1,2; review 3 1,2,3,4,5; ";
    const std::string plain = "review 2 3; ";
    const struct {
        int (*Operate)(CDrillDown&);
        std::string Subject;
    } cases[] = {
        {[](CDrillDown& a) { return int{a.DDNDescriptive(nullptr)}; }, "drill 3; "},
        {[](CDrillDown& a) { return int{a.DDNFrequency(nullptr)}; }, drill},
        {[](CDrillDown& a) { return int{a.RVFrequency(nullptr)}; }, review},
        {[](CDrillDown& a) { return int{a.DDNHistograms(nullptr)}; }, drill},
        {[](CDrillDown& a) { return int{a.RVHistograms(nullptr)}; }, review},
        {[](CDrillDown& a) { return a.DDNPiecharts(0, nullptr); }, drill},
        {[](CDrillDown& a) { return a.RVPiecharts(0, nullptr); }, review},
        {[](CDrillDown& a) { return a.DDNStackedplots(0, nullptr); }, "drill " + group + "+ 2 1,2 3 1,2,3,4,5; "},
        {[](CDrillDown& a) { return a.RVStackedplots(0, nullptr); }, "review " + group + "+ 2 1,2 3 1,2,3,4,5; "},
        {[](CDrillDown& a) { return int{a.RVBoxWhiker(nullptr)}; }, plain},
        {[](CDrillDown& a) { return int{a.RVScatterPlot(nullptr)}; }, plain},
        {[](CDrillDown& a) { return a.RV3DHistograms(0, nullptr); }, "review 3 1; "},
        {[](CDrillDown& a) { return int{a.DDNGraphForBrushing(nullptr)}; }, "drill 2 1,2; "},
        {[](CDrillDown& a) { return int{a.DDNDatasheet(nullptr)}; }, "?; "},
    };
    Analysis().SetCurrentDown(2);
    Host().Services.WorkIn = [](quillara::Window& window) {
        if (!window.IsClosed()) {
            quillara::ChooseVariables(window, {3}, {1});
        }
        return window.IsClosed();
    };
    for (const auto& each : cases) {
        Said.clear();
        EXPECT_EQ(each.Operate(Analysis()), 1);
        EXPECT_EQ(Said, each.Subject);
    }
    Analysis().SetCountMD(0);
    Said.clear();
    Analysis().DDNFrequency(nullptr);
    Analysis().DDNStackedplots(0, nullptr);
    EXPECT_EQ(Said, "drill " + group + "; drill 2 1,2; drill 3 1,2,3,4,5; drill " + group + "+ 2 1,2 3 1,2,3,4,5; ");
    Down("y", "2");
    Down("group", "3");
    Said.clear();
    Analysis().DDNSummary(nullptr);
    Analysis().SetCurrentDown(-1);
    Analysis().DDNGraphForBrushing(nullptr);
    EXPECT_EQ(Said, "drill 1 2; ");
}

TEST_F(Subjects, NamesOfCategoriesAreNeverKeysOrEmpty) {
    const Drill record = [] {
        Drill made(7, ContinuousVariable, 0, "x");
        made.CategorySet = {Categories{1, 0, 1, LongTextKey("A name that travels as its key"), 0},
                            Categories{1, 0, 2, "", 1}};
        return made;
    }();
    EXPECT_EQ(TextOf(SubjectOf(Analysis(), ResultSide::Review, record, false)),
              "review 7 A name that travels as its key,1.000000<x<=2.000000");
}

}  // namespace drilltest
