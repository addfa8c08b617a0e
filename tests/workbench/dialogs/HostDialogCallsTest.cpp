#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/AnalysisDialog.h"
#include "platform/WindowMessages.h"
#include "tests/workbench/Files.h"
#include "tests/workbench/hosting/TestAnalysis.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using testing::ElementsAre;

/// An analysis and a dialog of it, over the variables a, b and w.
struct HostDialogCalls : testing::Test {
    HostDialogCalls() { Host.Document.RunSequence(); }

    /// Answers the next dialogs, each with the next of the works in turn, then leaves them to be cancelled.
    void Answer(std::vector<std::function<void(Window&)>> works) {
        Host.Document.Services.WorkIn = [this, works, next = std::size_t{0}](Window& window) mutable {
            DialogId = window.Resource().Id;
            if (next == works.size()) {
                return false;
            }
            works[next++](window);
            return true;
        };
    }
    /// The use of each case: "use skip use".
    std::string Cases() {
        std::string text;
        for (int i = 1; i <= Host.Document.Table().Cases; ++i) {
            double values[4];
            int whole = 0;
            double weight = 0;
            text += Host.Analysis->cstart(i, values, &whole, &weight, &whole) == 0 ? "use " : "skip ";
        }
        return text;
    }
    /// The weight that the analysis sees: "2 of variable 3", or "none of variable 3".
    std::string Weight() {
        double values[4];
        int weighted = 0;
        int tag = 0;
        double weight = 0;
        Host.Analysis->cstrtw(1, values, &weighted, &weight, &tag);
        EXPECT_EQ(weighted, Host.Analysis->Weight.Active);
        const std::string shown = weighted != 0 ? std::to_string(static_cast<int>(weight)) : "none";
        return shown + " of variable " + std::to_string(Host.Analysis->Weight.Variable);
    }

    const DataTable Table = TableOf({Numbers("a", {1, 2, 3}), Numbers("b", {4, 5, 6}), Numbers("w", {2, 2, 3})});
    TestHost Host{Table};
    CAnalysisDialog Dialog{*Host.Analysis, 1, nullptr};
    int DialogId = 0;
};

TEST_F(HostDialogCalls, ListsAreWrittenOnOkOnly) {
    short lists[2][4] = {{2}, {}};
    short counts[2] = {1, -1};
    const auto ask = [&](short* offered) {
        return Host.Analysis->DoubleVarListDialog(nullptr, 1, "Title", offered, 0, 2, 0, 3, 3, lists[0], &counts[0],
                                                  lists[1], &counts[1], "A", nullptr, 2, nullptr, 0, 0);
    };
    EXPECT_EQ(ask(nullptr), 0);  // nobody answers
    Answer({[](Window& window) { ChooseVariables(window, {1, 2, 3}, {}); }});  // too many, then cancelled
    EXPECT_EQ(ask(nullptr), 0);
    EXPECT_EQ(DialogId, VariableListsDialogId);
    EXPECT_THAT(counts, ElementsAre(1, -1));
    Answer({[](Window& window) {
        EXPECT_EQ(window.At(VariableListsDialog::FirstList).ReportRows.size(), 1U);
        ChooseVariables(window, {3, 1}, {2});
    }});
    EXPECT_EQ(ask(nullptr), 1);
    EXPECT_THAT(lists[0], ElementsAre(3, 1, 0, 0));
    EXPECT_THAT(lists[1], ElementsAre(2, 0, 0, 0));
    EXPECT_THAT(counts, ElementsAre(2, 1));
    short offered[] = {3, 2, 3, 0, 1};
    Answer({[](Window& window) {
        EXPECT_EQ(window.At(VariableListsDialog::AvailableList).ReportRows.size(), 2U);
        window.Click(OkCommand);
    }});
    EXPECT_EQ(ask(offered), 1);
    EXPECT_THAT(counts, ElementsAre(1, 1));
    // While documents are updated nobody is asked, unless the lists aren't an answer any more.
    Host.Document.UpdateCounter = 1;
    DialogId = 0;
    Answer({});
    EXPECT_EQ(ask(offered), 1);
    EXPECT_THAT(counts, ElementsAre(1, 1));
    EXPECT_EQ(DialogId, 0);
    offered[1] = 1;  // 2 of the second list is gone
    EXPECT_EQ(ask(offered), 0);
    EXPECT_EQ(DialogId, VariableListsDialogId);
}

TEST_F(HostDialogCalls, TheCaseSelectionIsKeptWithItsFormula) {
    using Cases = CaseSelectionDialog;
    EXPECT_EQ(Dialog.DefineSelCond(1, nullptr), 0);
    Answer({[](Window& window) {
        window.Click(Cases::SelectedCases);
        window.Type(Cases::Formula, "a <> 2");
        window.Click(OkCommand);
    }});
    EXPECT_EQ(Dialog.DefineSelCond(1, nullptr), 1);
    EXPECT_EQ(HostDialogCalls::Cases(), "use skip use ");
    Answer({[](Window& window) { EXPECT_EQ(window.At(Cases::Formula).Text, "a <> 2"); }});
    EXPECT_EQ(Dialog.DefineSelCond(1, nullptr), 0);
    EXPECT_EQ(HostDialogCalls::Cases(), "use skip use ");
    Answer({[](Window& window) {
        window.Click(Cases::AllCases);
        window.Click(OkCommand);
    }});
    EXPECT_EQ(Dialog.DefineSelCond(1, nullptr), 1);
    EXPECT_EQ(HostDialogCalls::Cases(), "use use use ");
    EXPECT_EQ(DialogId, CaseSelectionDialogId);
}

TEST_F(HostDialogCalls, AWeightThatIsSwitchedOffStaysDefinedUntilAnotherTableIsOpened) {
    const auto flip = [](Window& window) {
        window.Click(WeightDialog::NoWeight);
        if (window.At(WeightDialog::VariableList).Selected < 0) {
            window.ClickText(WeightDialog::VariableList, "w");
        }
        window.Click(OkCommand);
    };
    EXPECT_EQ(Weight(), "none of variable 0");
    for (const char* weight : {"2 of variable 3", "none of variable 3", "2 of variable 3", "none of variable 3"}) {
        Answer({flip});
        EXPECT_EQ(Dialog.DefineWeight(1, nullptr), 1);
        EXPECT_EQ(Weight(), weight);
    }
    EXPECT_EQ(DialogId, WeightDialogId);
    EXPECT_EQ(Dialog.DefineWeight(1, nullptr), 0);
    EXPECT_EQ(Weight(), "none of variable 3");
    quillara::TableOf(&Host.Document).Exchange(std::make_shared<DataTable>(Table));
    EXPECT_EQ(Weight(), "none of variable 0");
}

TEST_F(HostDialogCalls, AnOpenedFileBecomesTheTable) {
    const TemporaryFolder folder;
    const auto open = [&](const std::string& path) {
        return [path](Window& window) {
            window.Type(OpenDataDialog::Path, path);
            window.Click(OkCommand);
        };
    };
    std::vector<std::string> said;
    Host.Document.Services.ShowMessage = [&](std::string_view text) { said.emplace_back(text); };
    Answer({open(folder.Path("none.csv"))});
    EXPECT_EQ(Dialog.OpenOrvFile(), 0);
    EXPECT_EQ(said.size(), 1U);
    EXPECT_EQ(&Host.Document.Table(), &Table);
    Answer({open(folder.Path("none.csv")), open(folder.Put("new.csv", "x\n1\n2\n"))});
    EXPECT_EQ(Dialog.OpenOrvFile(), 1);
    EXPECT_EQ(said.size(), 2U);
    EXPECT_EQ(Host.Document.Table().FileName, "new.csv");
    EXPECT_EQ(Host.Analysis->Table.Cases, 2);
    EXPECT_EQ(DialogId, OpenDataDialogId);
}

}  // namespace
}  // namespace quillara
