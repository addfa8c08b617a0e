// What the recorder of the host asks of the startup dialog.

#include <algorithm>
#include <array>
#include <new>

#include "dialogs/DefineTask.h"
#include "host/OleConstant.h"
#include "platform/OwnedText.h"
#include "platform/TextEncodings.h"
#include "resources/ControlIds.h"

namespace {

/// A control whose value only a member can tell.
struct RecordedMember {
    int Control;
    HRESULT (DDNStartup::*Read)(BSTR* pVal);
};

constexpr std::array RecordedMembers{
    RecordedMember{DrillOperationsGroup, &DDNStartup::get_DrillDownCategory},
    RecordedMember{DrillVariablesGroup, &DDNStartup::get_CategorySelections},
    RecordedMember{StatisticsGroup, &DDNStartup::get_UserDefinedBoundaries},
    RecordedMember{DrillDownListControl, &DDNStartup::get_DrillDownVariable},
    RecordedMember{DrillUpListControl, &DDNStartup::get_DrillUpVariable},
};

}  // namespace

COleAConstant* CDefineTask::RecordControlValue(int id) {
    const auto* const row = std::ranges::find(RecordedMembers, id, &RecordedMember::Control);
    if (row == RecordedMembers.end()) {
        return CDrillDownModelessDialog::RecordControlValue(id);
    }
    OwnedText text;
    DDNStartup& face = *this;
    if (!Succeeded((face.*row->Read)(text.Put()))) {
        return nullptr;
    }
    try {
        return new COleAConstant(NarrowText(text.View()));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
