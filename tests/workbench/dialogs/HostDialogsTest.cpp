#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/WindowMessages.h"
#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/windows/MessageQueue.h"

namespace quillara {
namespace {

using testing::HasSubstr;

/// The dialogs over a table of the variables age, sex, wt and day, and what they say.
struct HostDialogs : testing::Test {
    HostDialogs() { Table.Weight = 2; }

    HostDialog::Tell Listen() {
        return [this](std::string_view text) { Said = text; };
    }
    /// Presses OK: "closed", or what the dialog says.
    std::string Confirm(HostDialog& dialog) {
        Said = "nothing said";
        dialog.Shown().Click(OkCommand);
        return dialog.Shown().IsClosed() ? "closed" : Said;
    }

    DataTable Table = TableOf({Numbers("age", {20, 30, 40}), Texts("sex", {"Male", "Female", "Male"}),
                               Numbers("wt", {1, 2, 0.5}), Numbers("day", {1, 2, 3}, ValueKind::Date)});
    MessageQueue Queue;
    std::string Said;
};

/// The numbers of two lists: "3 1 | 2".
std::string Shown(const std::array<std::vector<short>, 2>& lists) {
    std::string text;
    for (const auto& list : lists) {
        text += &list == &lists.front() ? "" : "| ";
        for (const short number : list) {
            text += std::to_string(number) + " ";
        }
    }
    return text;
}

struct VariableLists : HostDialogs {
    using Dialog = VariableListsDialog;

    static VariableListsRequest Request() {
        return {"Title", {1, 2, 3, 4}, {{{"First:", 1, 2, {}}, {"Second", 0, 3, {4, 9, 4}}}}, 3};
    }

    VariableListsDialog TheDialog{Queue, Table, Request(), Listen()};
    Window& TheWindow = TheDialog.Shown();
};

TEST_F(VariableLists, AreFilledInTheOrderOfTheClicks) {
    EXPECT_STREQ(TheWindow.Resource().Title, "Title");
    EXPECT_EQ(Shown(TheDialog.Chosen()), "| 4 ");
    EXPECT_FALSE(TheWindow.At(Dialog::AddToFirst).Enabled || TheWindow.At(Dialog::TakeFromSecond).Enabled);
    for (const char* name : {"wt", "age", "day"}) {
        TheWindow.ClickText(Dialog::AvailableList, name);
        TheWindow.Click(Dialog::AddToFirst);
    }
    EXPECT_FALSE(TheWindow.At(Dialog::AddToFirst).Enabled || TheWindow.At(Dialog::AddToSecond).Enabled);
    EXPECT_EQ(Shown(TheDialog.Chosen()), "3 1 4 | 4 ");
    TheWindow.ClickText(Dialog::FirstList, "age");
    TheWindow.Click(Dialog::TakeFromFirst);
    TheWindow.Click(Dialog::TakeFromFirst);
    EXPECT_TRUE(TheWindow.At(Dialog::AddToFirst).Enabled);
    EXPECT_EQ(Shown(TheDialog.Chosen()), "3 | 4 ");
}

TEST_F(VariableLists, AreAcceptedWithinTheLimitsOnly) {
    const struct {
        std::vector<short> First, Second;
        const char* Outcome;
    } answers[] = {
        {{}, {1}, "First: choose at least 1 variable."},
        {{1, 2, 3}, {}, "First: choose at most 2 variables, not 3."},
        {{1}, {1, 2, 3, 4}, "Second: choose at most 3 variables, not 4."},
        {{1, 2}, {3, 4}, "Choose at most 3 variables in both lists together, not 4."},
        {{2}, {4, 2}, "closed"},
    };
    for (const auto& [first, second, outcome] : answers) {
        ChooseVariables(TheWindow, first, second);
        EXPECT_EQ(TheWindow.IsClosed() ? "closed" : Said, outcome);
    }
    EXPECT_EQ(TheWindow.CloseResult(), OkCommand);
    EXPECT_EQ(Shown(TheDialog.Chosen()), "2 | 4 2 ");
}

TEST_F(VariableLists, AnswersThatCannotBeGivenChangeNothing) {
    EXPECT_THROW(ChooseVariables(TheWindow, {1}, {0}), UsageError);
    EXPECT_THROW(ChooseVariables(TheWindow, {5}, {}), UsageError);
    EXPECT_THROW(ChooseVariables(TheWindow, {1, 1}, {}), UsageError);
    EXPECT_EQ(Shown(TheDialog.Chosen()), "| 4 ");
    WeightDialog other(Queue, Table, {}, {});
    EXPECT_THROW(ChooseVariables(other.Shown(), {1}, {}), UsageError);
    TheWindow.Click(CancelCommand);
    EXPECT_EQ(TheWindow.CloseResult(), CancelCommand);
}

TEST_F(HostDialogs, CasesAreSelectedByAFormulaThatCanBeRead) {
    CaseSelectionDialog all(Queue, Table, std::nullopt, Listen());
    EXPECT_THROW(all.Shown().Type(CaseSelectionDialog::Formula, "age > 20"), UsageError);
    EXPECT_EQ(Confirm(all), "closed");
    EXPECT_FALSE(all.Choice().Formula);

    CaseSelectionDialog some(Queue, Table, "age > 20", Listen());
    some.Shown().Type(CaseSelectionDialog::Formula, "age >");
    EXPECT_THAT(Confirm(some), HasSubstr("can't be read at character 6"));
    some.Shown().Type(CaseSelectionDialog::Formula, "age >= 30");
    EXPECT_EQ(Confirm(some), "closed");
    EXPECT_EQ(some.Choice().Formula, "age >= 30");
    EXPECT_EQ(some.Choice().Results, (std::vector{CaseResult::Skip, CaseResult::Use, CaseResult::Use}));
}

TEST_F(HostDialogs, AWeightInForceNeedsAVariableOfNumbers) {
    WeightDialog dialog(Queue, Table, {}, Listen());
    Window& window = dialog.Shown();
    EXPECT_EQ(window.At(WeightDialog::DeclaredWeight).Text, "The file declares wt as its weight.");
    EXPECT_THROW(window.ClickRow(WeightDialog::VariableList, 0), UsageError);  // disabled
    window.Click(WeightDialog::NoWeight);
    EXPECT_THROW(window.ClickText(WeightDialog::VariableList, "sex"), UsageError);
    EXPECT_THAT(Confirm(dialog), HasSubstr("Choose the variable"));
}

TEST_F(HostDialogs, TablesOfThisRunAreOpenedTheNewestFirst) {
    OpenDataDialog none(Queue, {}, Listen());
    EXPECT_THROW(none.Shown().Click(OpenDataDialog::FromRun), UsageError);
    EXPECT_EQ(Confirm(none), "Give the path of a data file.");

    const OpenDataDialog::Tables made = {std::make_shared<DataTable>(), std::make_shared<DataTable>(Table)};
    for (const int row : {0, 1}) {
        OpenDataDialog run(Queue, made, Listen());
        run.Shown().Click(OpenDataDialog::FromRun);
        if (row == 0) {
            run.Shown().ClickRow(OpenDataDialog::TableList, row);
        }
        EXPECT_EQ(Confirm(run), "closed");
        EXPECT_EQ(run.Opened(), made[static_cast<std::size_t>(row)]);
    }
}

}  // namespace
}  // namespace quillara
