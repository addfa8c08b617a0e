#include "workbench/desktop/results/DocumentView.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>

#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/results/DocumentFile.h"
#include "workbench/desktop/results/DrillMenu.h"
#include "workbench/desktop/results/Printing.h"
#include "workbench/desktop/results/ResultTitles.h"
#include "workbench/desktop/results/TableResultView.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/ExploredOutputs.h"

namespace quillara {

DocumentView::DocumentView(ResultDocument& document, ExplorationModel& model, QWidget* parent)
    : QWidget(parent), Document(CountedPointer<ResultDocument>::Share(&document)), Explored(model) {
    setAccessibleName(TitleOf(document));
    AddCommonActions();
}

void DocumentView::Show(ResultDocument& document) {
    Document = CountedPointer<ResultDocument>::Share(&document);
    Refresh();
}

QAction* DocumentView::AddAction(const QString& text, const QKeySequence& keys, const std::function<void()>& act) {
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, act);
    addAction(action);
    return action;
}

void DocumentView::AddCommonActions() {
    AddAction(tr("&Copy"), QKeySequence::Copy, [this] { Copy(); });
    AddAction(tr("&Save as..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [this] { AskWhereToSave(); });
    AddAction(tr("&Print..."), QKeySequence::Print,
              [this] { AskAndPrint([this](QPrinter& printer) { Print(printer); }, this); });
    AddAction(tr("Print pre&view..."), {},
              [this] { ShowPrintPreview([this](QPrinter& printer) { Print(printer); }, this); });
}

void DocumentView::AskWhereToSave() {
    const QString suggested = QString::fromStdString(FileNameFor(*Document));
    const QString path = AskForFile(this, tr("Save result"), suggested, FileKinds());
    if (!path.isEmpty()) {
        Explored.Do([&](Exploration& /*any*/) { SaveTo(path); });
    }
}

void DocumentView::SaveTo(const QString& path) {
    if (Exploration* exploration = Explored.Present()) {
        SaveDocument(*exploration, *Document, path);
    }
}

void DocumentView::contextMenuEvent(QContextMenuEvent* event) {
    QPoint point = event->pos();
    const bool isByKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const DocumentPlace place = isByKeyboard ? PlaceInFocus(point) : PlaceAt(point);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    AddDrillOffers(*menu, Explored, *Document, place);
    menu->addSeparator();
    menu->addActions(actions());
    menu->popup(isByKeyboard ? mapToGlobal(point) : event->globalPos());
}

DocumentView* ViewOf(ResultDocument& document, ExplorationModel& model, QWidget* parent) {
    if (document.Graph() != nullptr) {
        return new ChartResultView(document, model, parent);
    }
    return new TableResultView(document, model, parent);
}

}  // namespace quillara
