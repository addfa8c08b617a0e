// The pointer of an application that is busy comes with an update and goes with it, however it ends.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <stdexcept>
#include <vector>

#include "host/Application.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/window/BusyPointer.h"
#include "workbench/hosting/WaitCursor.h"

namespace quillara {
namespace {

bool IsBusy() {
    return QGuiApplication::overrideCursor() != nullptr;
}

std::vector<bool> Seen;  // of the pointer, whenever an analysis has asked for one

TEST(BusyPointer, ShowsDuringAnUpdateAndNotInItsDialogs) {
    ShownSurvey survey;
    Click(survey.Dialog(), AutoUpdateBox);
    Click(survey.Dialog(), HistogramsButton);
    Click(survey.Dialog(), FrequenciesButton);
    Seen.clear();
    HearWaitCursor([](bool isShown) {
        ShowBusyPointer(isShown);
        Seen.push_back(IsBusy());
    });
    survey.InModal(DownButton, [](DialogView& view) {
        EXPECT_FALSE(IsBusy());
        Click(view, OkCommand);
    });
    HearWaitCursor(ShowBusyPointer);
    EXPECT_EQ(Seen, std::vector({true, true, true, false}));  // and after each of two results
    EXPECT_FALSE(IsBusy());
}

TEST(BusyPointer, GoesAfterAFailureAndComesBackAfterAMessage) {
    ShownSurvey survey;
    survey.Main.Model().Do([&](Exploration& /*exploration*/) {
        BeginWaitCursor();
        BeginWaitCursor();  // an update within another
        EXPECT_TRUE(IsBusy());
        survey.Main.Model().ShowMessage("It is the user's turn.");
        EXPECT_FALSE(IsBusy());
        RestoreWaitCursor();
        EXPECT_TRUE(IsBusy());
        EndWaitCursor();
        EXPECT_TRUE(IsBusy());
        throw std::runtime_error("No memory.");
    });
    EXPECT_FALSE(IsBusy());
    EndWaitCursor();
    EXPECT_FALSE(IsBusy());
    EXPECT_EQ(survey.Said.size(), 2U);
}

}  // namespace
}  // namespace quillara
