// What the lists of the dialogs show, and which controls are on with them.

#include <array>

#include "resources/ControlIds.h"
#include "tests/engine/DrillBench.h"
#include "workbench/windows/MessageQueue.h"
#include "workbench/windows/Window.h"

namespace drilltest {

namespace {

// clang-format off
constexpr std::array<ControlResource, 7> ListControls{{
    {DrillDownListControl, ControlKind::ListBox, "", {}},
    {DrillUpListControl,   ControlKind::ListBox, "", {}},
    {BrushButton,          ControlKind::Button,  "", {}},
    {CurrentOrderList,     ControlKind::ListBox, "", {}},
    {NewOrderList,         ControlKind::ListBox, "", {}},
    {PlaceButton,          ControlKind::Button,  "", {}},
    {TakeBackButton,       ControlKind::Button,  "", {}},
}};
// clang-format on
constexpr DialogResource ListDialog{1, "", 0, 0, ListControls};

class ListPresentation : public testing::Test, public DrillBench {
  protected:
    ListPresentation() : DrillBench(Road::Columns) {
        Open({Numbers("Age", {12, 12, 30, NA}), Numbers("Sex", {1, 2, 2, 1}), Numbers("Town", {1, 1, 1, 2}),
              Numbers("Work", {1, 1, 1, 2})});
        Choose({"Age", "Sex", "Town", "Work"});
    }

    /// "Age, Sex", the rows of a list, or "off".
    std::string Rows(int list) {
        const quillara::Control& control = Dialog.At(list);
        std::string text;
        for (const std::string& row : control.Rows) {
            text += (text.empty() ? "" : ", ") + row;
        }
        EXPECT_EQ(control.Enabled, !text.empty());
        return control.Enabled ? text : "off";
    }
    /// Both lists of the startup dialog.
    std::string StartupLists() {
        EXPECT_EQ(Dialog.At(BrushButton).Enabled, Dialog.At(DrillDownListControl).Enabled);
        return Rows(DrillDownListControl) + " | " + Rows(DrillUpListControl);
    }
    /// Both lists of the order dialog.
    std::string OrderLists() {
        EXPECT_EQ(Dialog.At(PlaceButton).Enabled, Dialog.At(CurrentOrderList).Enabled);
        EXPECT_EQ(Dialog.At(TakeBackButton).Enabled, Dialog.At(NewOrderList).Enabled);
        return Rows(CurrentOrderList) + " | " + Rows(NewOrderList);
    }
    std::string Refreshed() {
        EXPECT_EQ(Analysis().RefreshListBoxes(&Dialog), 1);
        return StartupLists();
    }

    quillara::MessageQueue Queue;
    quillara::Window Dialog{Queue, ListDialog, [](HWND, unsigned, std::uint64_t, std::int64_t) { return 0; }};
};

TEST_F(ListPresentation, ShowsStepsWithTheirCategory) {
    EXPECT_EQ(Refreshed(), "Age, Sex, Town, Work | off");
    Down("Age", "12");
    EXPECT_EQ(Refreshed(), "Sex, Town, Work | Age (12)");
    Down("Sex", "2");
    Down("Town", "1");
    EXPECT_EQ(Refreshed(), "Work | Town (1), Sex (2), Age (12)");
    Down("Work", "1");
    EXPECT_EQ(Refreshed(), "off | Work (1), Town (1), Sex (2), Age (12)");
    Up("Sex");
    EXPECT_EQ(Refreshed(), "Sex | Work (1), Town (1), Age (12)");
    for (const char* name : {"Work", "Town", "Age"}) {
        Up(name);
    }
    Down("Age", "Missing");
    EXPECT_EQ(Refreshed(), "Town, Work, Sex | Age (Missing)");
    for (const int category : {-1, 3}) {
        RecordIn(*Analysis().DrillUps, "Age").ChosenCategory = category;
        EXPECT_EQ(Refreshed(), "Town, Work, Sex | Age") << "a category that isn't there";
    }
    Choose({});
    EXPECT_EQ(Refreshed(), "off | off");
}

TEST_F(ListPresentation, SplitsTheVariablesByTheirNewPlaces) {
    struct Case {
        std::vector<std::int32_t> Request;
        const char* Lists;
    };
    // clang-format off
    const Case cases[] = {
        {{-1, -1, -1, -1}, "Age, Sex, Town, Work | off"},
        {{-1,  0, -1,  1}, "Age, Town | Sex, Work"},
        {{-1,  1, -1,  0}, "Age, Town | Work, Sex"},
        {{ 3,  1,  0,  2}, "off | Town, Sex, Work, Age"},
        {{ 0,  7, -1, -5}, "Town | Age"},  // a place that isn't there
        {{-1,  0},         "Age | Sex"},
        {{},               "off | off"},
    };
    // clang-format on
    for (const Case& each : cases) {
        EXPECT_EQ(Analysis().LeftAndRight(&Dialog, each.Request.data(), static_cast<int>(each.Request.size())), 1);
        EXPECT_EQ(OrderLists(), each.Lists);
    }
}

TEST_F(ListPresentation, WithoutMemoryLeavesTheDialogAlone) {
    const std::size_t live = Host().LiveAllocations();
    const std::int32_t request[]{-1, -1, 0, -1};
    Refreshed();
    Analysis().LeftAndRight(&Dialog, request, 4);
    Down("Age", "12");
    for (const int call : {1, 2}) {
        Host().FailAllocation(call);
        EXPECT_EQ(Analysis().RefreshListBoxes(&Dialog), 0);
        Host().FailAllocation(call);
        EXPECT_EQ(Analysis().LeftAndRight(&Dialog, request, 3), 0);
        EXPECT_EQ(StartupLists(), "Age, Sex, Town, Work | off");
        EXPECT_EQ(OrderLists(), "Age, Sex, Work | Town");
    }
    EXPECT_EQ(Host().LiveAllocations(), live);
    EXPECT_EQ(TakeMessages(), Names{});
}

}  // namespace

}  // namespace drilltest
