#include "workbench/desktop/dialogs/ListMenus.h"

#include <QListWidget>
#include <QMenu>

#include "resources/ControlIds.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/results/DrillMenu.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/DrillOffers.h"

namespace quillara {
namespace {

/// Of the row at a place; where there is none, as when a key has asked, of the one that is selected.
void OpenMenu(QListWidget& list, int id, ExplorationModel& model, const QPoint& place) {
    const QModelIndex pointed = list.indexAt(place);
    const int row = pointed.isValid() ? pointed.row() : list.currentRow();
    if (model.Present() == nullptr || row < 0) {
        return;
    }
    auto* menu = new QMenu(&list);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    AddDrillOffers(*menu, model, OffersAtRow(*model.Present(), id, row));
    menu->popup(pointed.isValid() ? list.viewport()->mapToGlobal(place)
                                  : list.viewport()->mapToGlobal(list.visualItemRect(list.item(row)).center()));
}

}  // namespace

void AddListMenus(DialogView& startup, ExplorationModel& model) {
    for (const int id : {int{DrillDownListControl}, int{DrillUpListControl}}) {
        if (auto* list = qobject_cast<QListWidget*>(startup.Find(id))) {
            list->setContextMenuPolicy(Qt::CustomContextMenu);
            QObject::connect(list, &QWidget::customContextMenuRequested, list,
                             [list, id, &model](const QPoint& place) { OpenMenu(*list, id, model, place); });
        }
    }
}

}  // namespace quillara
