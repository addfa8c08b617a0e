#pragma once

namespace quillara {

/// Ids of the dialogs of the host itself, by which scripts tell them apart. They never change.
enum HostDialogId : int {
    VariableListsDialogId = 101,
    CaseSelectionDialogId = 102,
    WeightDialogId = 103,
    OpenDataDialogId = 104,
};

}  // namespace quillara
