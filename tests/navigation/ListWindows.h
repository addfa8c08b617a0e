#pragma once

#include <string>
#include <vector>

#include "engine/DrillDown.h"
#include "resources/Dialogs.h"
#include "tests/Scripts.h"
#include "workbench/windows/MessageQueue.h"
#include "workbench/windows/Window.h"

namespace drilltest {

/// The lists of the startup and of the order dialog. Both show as "Age, Sex | off": their rows, or that they can't be
/// used; "refused" stands in front when they weren't filled.
class ListWindows {
  public:
    /// Open variables and steps.
    std::string Drills(CDrillDown& analysis) {
        const std::string refused = analysis.RefreshListBoxes(&Startup) == 1 ? "" : "refused ";
        return refused + Rows(Startup, DrillDownListControl, BrushButton) + " | " +
               Rows(Startup, DrillUpListControl, DrillUpListControl);
    }
    /// Open variables without and with a place in the request.
    std::string Places(CDrillDown& analysis, const std::vector<std::int32_t>& request) {
        const int filled = analysis.LeftAndRight(&Order, request.data(), static_cast<int>(request.size()));
        return (filled == 1 ? "" : "refused ") + Rows(Order, CurrentOrderList, PlaceButton) + " | " +
               Rows(Order, NewOrderList, TakeBackButton);
    }

  private:
    /// The button is on with its list.
    static std::string Rows(quillara::Window& window, int list, int button) {
        const bool isOn = !window.At(list).Rows.empty();
        EXPECT_EQ(window.At(list).Enabled, isOn);
        EXPECT_EQ(window.At(button).Enabled, isOn);
        return isOn ? testing_scripts::Joined(window.At(list).Rows, ", ") : "off";
    }
    static std::int64_t Ignore(HWND, unsigned, std::uint64_t, std::int64_t) { return 0; }

    quillara::MessageQueue Queue;
    quillara::Window Startup{Queue, DialogTable[0], Ignore};
    quillara::Window Order{Queue, DialogTable[OrderDialog - StartupDialog], Ignore};
};

}  // namespace drilltest
