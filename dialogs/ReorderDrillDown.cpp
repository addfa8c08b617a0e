#include "dialogs/ReorderDrillDown.h"

#include <algorithm>
#include <span>

#include "engine/DrillDown.h"
#include "engine/NewPlaces.h"
#include "engine/OutOfMemory.h"
#include "resources/ControlIds.h"

using namespace drilldown;

namespace {

std::span<std::int32_t> EntriesOf(const ReorderDrillDown& dialog) {
    return {dialog.OrderMap.data(), static_cast<std::size_t>(dialog.OrderCount)};
}

}  // namespace

ReorderDrillDown::ReorderDrillDown(CDrillDown& analysis)
    : CDrillDownModalDialog(analysis, OrderDialog, analysis.GetStartupWindow()),
      Analysis(&analysis),
      OrderMap(analysis, analysis.GetDrillDowns()->size()),
      OrderCount(OrderMap ? analysis.GetDrillDownsSize() : 0) {
    std::ranges::fill(EntriesOf(*this), NotPlaced);
}

std::int64_t ReorderDrillDown::EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    switch (message) {
        case WindowMessage::InitDialog:
            return Start(window);
        case WindowMessage::Command:
            return OrderMap ? OnCommand(window, CommandOf(wParam)) : 0;
        default:
            break;
    }
    const int queried = ColourQueryControl(message, lParam);
    const bool isList = queried == CurrentOrderList || queried == NewOrderList;
    return isList ? ColourAsResult(window, wParam, lParam) : 0;
}

std::int64_t ReorderDrillDown::Start(HWND window) {
    InitOpeningDialog();
    if (OrderMap) {
        Analysis->LeftAndRight(window, OrderMap.data(), OrderCount);
    } else {
        ReportNotEnoughMemory(*Analysis);
        ExitDialog(0, 0, 0);
    }
    return 1;
}

std::int64_t ReorderDrillDown::OnCommand(HWND window, int command) {
    switch (command) {
        case OkCommand:
            Analysis->ReorderDrillDowns(OrderMap.data(), OrderCount, OrderAssigned);
            ExitDialog(1, 0, 0);
            return 1;
        case CancelCommand:
            ExitDialog(0, 0, 0);
            break;
        case PlaceButton:
            Place(window);
            break;
        case TakeBackButton:
            TakeBack(window);
            break;
        default:
            break;
    }
    return 0;
}

void ReorderDrillDown::Place(HWND window) {
    const int row = GetListSelection(GetDlgItem(window, CurrentOrderList));
    if (row < 0) {
        return;
    }
    int openBefore = 0;
    for (std::int32_t& place : EntriesOf(*this)) {
        if (place == NotPlaced && openBefore++ == row) {
            place = OrderAssigned++;
            break;
        }
    }
    Analysis->LeftAndRight(window, OrderMap.data(), OrderCount);
}

void ReorderDrillDown::TakeBack(HWND window) {
    const int row = GetListSelection(GetDlgItem(window, NewOrderList));
    if (row < 0) {
        return;
    }
    for (std::int32_t& place : EntriesOf(*this)) {
        if (place == row) {
            place = NotPlaced;
            --OrderAssigned;
        } else if (place > row) {
            --place;
        }
    }
    Analysis->LeftAndRight(window, OrderMap.data(), OrderCount);
}
