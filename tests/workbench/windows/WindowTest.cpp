#include "workbench/windows/Window.h"

#include <gtest/gtest.h>

#include <string>

#include "host/WindowServices.h"
#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/windows/MessageQueue.h"

namespace quillara {
namespace {

// clang-format off
constexpr ControlResource MainControls[] = {
    // Id           Kind                     Caption  Place
    {1,             ControlKind::Button,     "OK",    {}},
    {5,             ControlKind::CheckBox,   "Both",  {}},
    {10,            ControlKind::ListBox,    "",      {}},
    {11,            ControlKind::ReportList, "",      {}},
    {12,            ControlKind::RealField,  "",      {}},
    {13,            ControlKind::Edit,       "",      {}},
    {NoControlId,   ControlKind::Static,     "Label", {}},
};
constexpr ControlResource PageControls[] = {
    // Id           Kind                     Caption  Place
    {5,             ControlKind::CheckBox,   "Again", {}},
    {20,            ControlKind::RadioButton, "A",    {}},
    {21,            ControlKind::RadioButton, "B",    {}},
};
// clang-format on
constexpr DialogResource MainResource{1, "Main", 100, 100, MainControls};
constexpr DialogResource PageResource{2, "Page", 100, 100, PageControls};

struct Dragged : CReorderListBox {
    explicit Dragged(std::string& log) : CReorderListBox(0, 1), Log(log) {}
    void EndOfWindow() override {
        Log += "[end]";
        delete this;
    }
    void MoveSelectionTo(int target) override { Log += "[drag " + std::to_string(target) + "]"; }

    std::string& Log;
};

/// A window that writes down the messages it gets.
struct WindowTest : testing::Test {
    std::int64_t Note(unsigned message, std::uint64_t wParam, std::int64_t lParam) {
        if (message == WindowMessage::Command) {
            Log += "[" + std::to_string(CommandOf(wParam)) + "]";
        } else if (message == WindowMessage::Notify) {
            const auto& event = *reinterpret_cast<const ListNotification*>(lParam);
            Log += "[" + std::to_string(event.Code) + " row " + std::to_string(event.Row) + "]";
        } else if (message == WindowMessage::InitDialog) {
            Log += "[start]";
        }
        if (CommandOf(wParam) == OkCommand) {
            TheWindow.Close(7);
        }
        return 3;
    }

    std::string Log;
    MessageQueue Queue;
    Window TheWindow{Queue, MainResource, [this](HWND, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
                         return Note(message, wParam, lParam);
                     }};
};

TEST_F(WindowTest, ClicksChangeChecksBeforeTheirCommand) {
    TheWindow.AddPage(PageResource);
    TheWindow.Start();
    TheWindow.Click(20);
    TheWindow.Click(21);
    TheWindow.Click(5);
    EXPECT_FALSE(TheWindow.At(20).Checked);
    EXPECT_TRUE(TheWindow.At(21).Checked);
    EXPECT_TRUE(TheWindow.At(5).Checked);
    EXPECT_EQ(TheWindow.At(5).Text, "Both") << "an id that stands twice is one control";
    EXPECT_EQ(Log, "[start][20][21][5]");
}

TEST_F(WindowTest, ListsReportWhatTheUserDoesAndReportListsTheirSelection) {
    constexpr const char* rows[] = {"a", "b", nullptr};
    InitStaticListBox(GetDlgItem(&TheWindow, 10), rows);
    SetListSelection(GetDlgItem(&TheWindow, 10), 0);
    TheWindow.ClickText(10, "b");
    EXPECT_EQ(GetListSelection(GetDlgItem(&TheWindow, 10)), 1);
    CListCtrl list;
    list.InsertItem(0, "nowhere", true);
    list.Attach(GetDlgItem(&TheWindow, 11));
    list.InsertColumn(0, "C", 10);
    list.InsertItem(0, "x", true);
    list.InsertItem(1, "y", false);
    list.SelectItem(0);
    list.SelectItem(1);
    TheWindow.DoubleClickRow(11, 0);
    EXPECT_EQ(Log, "[10][-101 row 0][-101 row 1][-101 row 0][-3 row 0]");
    EXPECT_THROW(TheWindow.ClickRow(11, 2), UsageError);
    EXPECT_THROW(TheWindow.ClickText(10, "c"), UsageError);
}

TEST_F(WindowTest, PostedMessagesRunInOrderAndSentOnesAtOnce) {
    PostWindowMessage(&TheWindow, WindowMessage::Command, 30, 0);
    PostWindowMessage(GetDlgItem(&TheWindow, 10), WindowMessage::Command, 31, 0);
    EXPECT_EQ(SendWindowMessage(&TheWindow, WindowMessage::Command, 32, 0), 3);
    Queue.DispatchAll();
    EXPECT_EQ(Log, "[32][30][31]");
}

TEST_F(WindowTest, AClosedWindowHearsNothingMore) {
    PostWindowMessage(&TheWindow, WindowMessage::Command, 30, 0);
    TheWindow.Click(1);
    TheWindow.Close(8);
    PostWindowMessage(&TheWindow, WindowMessage::Command, 31, 0);
    Queue.DispatchAll();
    EXPECT_EQ(TheWindow.CloseResult(), 7) << "the first result counts";
    EXPECT_EQ(Log, "[1]");
}

TEST_F(WindowTest, AUserCanOnlyUseWhatIsThereAndEnabled) {
    EnableWindow(GetDlgItem(&TheWindow, 5), false);
    TheWindow.At(12).Range = FieldRange{0, 5};
    TheWindow.TypeNumber(12, 9);
    EXPECT_EQ(TheWindow.At(12).Number, 5);
    TheWindow.Type(13, "text");
    EXPECT_EQ(TheWindow.At(13).Text, "text");
    EXPECT_THROW(TheWindow.Click(5), UsageError);
    EXPECT_THROW(TheWindow.Click(99), UsageError);
    EXPECT_THROW(TheWindow.Click(12), UsageError);
    TheWindow.At(1).Visible = false;
    EXPECT_THROW(TheWindow.Click(1), UsageError);
    EXPECT_EQ(Log, "");
}

TEST(WindowEndTest, ListBoxesHearOfDragsAndOfTheEnd) {
    std::string log;
    {
        MessageQueue queue;
        Window window(queue, MainResource, [](auto...) { return 0; });
        window.At(10).Rows = {"a", "b"};
        (new Dragged(log))->Attach(GetDlgItem(&window, 10));
        window.Drag(10, 2);
        EXPECT_THROW(window.Drag(10, 3), UsageError);
        window.Post(WindowMessage::Command, 1, 0);
    }
    EXPECT_EQ(log, "[drag 2][end]");
}

}  // namespace
}  // namespace quillara
