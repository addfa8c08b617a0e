#pragma once

#include <cstdint>

#include "host/AnalysisDialog.h"
#include "host/WindowServices.h"
#include "platform/WindowMessages.h"

/// Base of the module's modal dialogs.
class CDrillDownModalDialog : public CAnalysisModalDialog {
  public:
    using CAnalysisModalDialog::CAnalysisModalDialog;

  protected:
    /// Answers the query for the colour of a control: that of fields that show results. Gives the host's result.
    std::int64_t ColourAsResult(HWND window, std::uint64_t wParam, std::int64_t lParam) {
        constexpr int resultField = 1;
        return HandleWM_CTLCOLOR(window, wParam, lParam, RGBAttrType(resultField));
    }
};

/// Id of the control whose colour a message asks for; 0 for every other message.
[[nodiscard]] inline int ColourQueryControl(unsigned message, std::int64_t lParam) {
    if (message < WindowMessage::ColourOfEdit || message > WindowMessage::ColourOfStatic) {
        return 0;
    }
    return GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
}
