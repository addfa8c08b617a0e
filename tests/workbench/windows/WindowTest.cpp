#include "workbench/windows/Window.h"

#include <gtest/gtest.h>

#include "host/WindowServices.h"

namespace {

TEST(Window, ControlsOfTheWindowAndItsPagesAreEnabledAndFilled) {
    const char* const texts[] = {"one", "two", nullptr};
    quillara::Window dialog;
    quillara::Control& list = dialog.AddPage().AddControl(9053);
    EXPECT_EQ(GetDlgItem(&list, 9053), nullptr);
    for (const HWND handle : {GetDlgItem(&dialog, 1), GetDlgItem(nullptr, 9053), HWND{&dialog}, HWND{&list}}) {
        EnableWindow(handle, false);
        InitStaticListBox(handle, texts);
    }
    EXPECT_TRUE(!list.Enabled && GetDlgItem(&dialog, 9053) == &list);
    EXPECT_EQ(list.Rows, (std::vector<std::string>{"one", "two"}));
    InitStaticListBox(&list, texts + 2);
    EXPECT_TRUE(list.Rows.empty());
}

}  // namespace
