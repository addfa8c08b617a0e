#include "dialogs/BoundariesDlg.h"

#include "dialogs/BoundaryList.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "resources/ControlIds.h"

using namespace drilldown;

namespace {

/// Bytes of the edit box that are read, with the zero at the end.
constexpr int BoundaryTextSize = 2048;

}  // namespace

CBoundariesDlg::CBoundariesDlg(CDrillDown& analysis)
    : CDrillDownModalDialog(analysis, BoundariesDialog, analysis.GetStartupWindow()), Analysis(&analysis) {}

std::int64_t CBoundariesDlg::EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    switch (message) {
        case WindowMessage::InitDialog:
            InitOpeningDialog();
            SetDlgItemTextA(window, BoundariesVariableCaption, Analysis->GetCurrentVariableName().c_str());
            return 0;
        case WindowMessage::Command:
            return OnCommand(window, CommandOf(wParam));
        default:
            return ColourQueryControl(message, lParam) == BoundariesVariableCaption
                       ? ColourAsResult(window, wParam, lParam)
                       : 0;
    }
}

std::int64_t CBoundariesDlg::OnCommand(HWND window, int command) {
    if (command == CancelCommand) {
        ExitDialog(0, 0, 0);
    }
    if (command != OkCommand || ParseBoundaries(window) == 0) {
        return 0;
    }
    ExitDialog(1, 0, 0);
    return 1;
}

int CBoundariesDlg::ParseBoundaries(HWND window) {
    const HostBuffer<char> text(*Analysis, BoundaryTextSize);
    const HostBuffer<double> boundaries(*Analysis, MostBoundaries);
    if (!text || !boundaries) {
        return 0;
    }
    GetDlgItemTextA(window, BoundariesEdit, text.data(), BoundaryTextSize);
    const std::span<double, MostBoundaries> room(boundaries.data(), MostBoundaries);
    const BoundaryListResult list = ReadBoundaryList(text.data(), room);
    if (list.Fault != NoFault) {
        const std::string complaint = szLoadResString(Analysis->GetLibInstance(), list.Fault);
        Analysis->dsplst(static_cast<int>(complaint.size()), complaint.c_str());
        return 0;
    }
    const auto count = static_cast<int>(list.Count);
    Analysis->SetUserIntervals(boundaries.data(), count);
    Analysis->SetIsset(Analysis->GetCurrentDown(), 0);
    return count;
}
