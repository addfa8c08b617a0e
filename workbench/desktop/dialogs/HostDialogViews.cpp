#include "workbench/desktop/dialogs/HostDialogViews.h"

#include <utility>

#include "resources/ControlIds.h"
#include "workbench/desktop/dialogs/CaseSelectionView.h"
#include "workbench/desktop/dialogs/SmallHostViews.h"
#include "workbench/desktop/dialogs/VariableListsView.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"

namespace quillara {

DialogView* MakeDialogView(Window& window, DialogView::Act act, QWidget* parent) {
    switch (window.Resource().Id) {
        case VariableListsDialogId:
            return new VariableListsView(window, std::move(act), parent);
        case WeightDialogId:
            return new WeightView(window, std::move(act), parent);
        case OrderDialog:
            return new OrderView(window, std::move(act), parent);
        case BoundariesDialog:
            return new BoundariesView(window, std::move(act), parent);
        default:
            break;
    }
    if (const auto* cases = dynamic_cast<const CaseSelectionDialog*>(window.Shows())) {
        return new CaseSelectionView(window, *cases, std::move(act), parent);
    }
    if (auto* data = dynamic_cast<OpenDataDialog*>(window.Shows())) {
        return new OpenDataView(window, *data, std::move(act), parent);
    }
    return new DialogView(window, std::move(act), parent);
}

}  // namespace quillara
