#include "workbench/desktop/window/Workspace.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QTimer>

#include "workbench/desktop/results/DocumentView.h"
#include "workbench/desktop/window/ExplorationModel.h"

namespace quillara {

Workspace::Workspace(ExplorationModel& model, QWidget* parent) : QMdiArea(parent), Model(model) {
    connect(&model, &ExplorationModel::documentAppeared, this, [this](ResultDocument* document) { Add(*document); });
    connect(&model, &ExplorationModel::documentChanged, this, [this](ResultDocument* document) { Refresh(*document); });
    connect(&model, &ExplorationModel::documentWent, this, [this](ResultDocument* document) { Remove(*document); });
}

DocumentView* Workspace::Find(ResultDocument& document) const {
    const auto found = Windows.find(&document);
    return found == Windows.end() ? nullptr : found->second.View;
}

void Workspace::Add(ResultDocument& document) {
    DocumentView* view = ViewOf(document, nullptr);
    QMdiSubWindow* frame = addSubWindow(view);
    frame->setAttribute(Qt::WA_DeleteOnClose, false);
    frame->setWindowTitle(QString::fromStdString(document.Name()));
    frame->installEventFilter(this);
    frame->resize(560, 400);
    frame->show();
    Windows[&document] = {frame, view};
}

void Workspace::Refresh(ResultDocument& document) {
    if (const auto found = Windows.find(&document); found != Windows.end()) {
        found->second.Frame->setWindowTitle(QString::fromStdString(document.Name()));
        found->second.View->Refresh();
    }
}

void Workspace::Remove(ResultDocument& document) {
    if (const auto found = Windows.find(&document); found != Windows.end()) {
        QMdiSubWindow* frame = found->second.Frame;
        Windows.erase(found);
        removeSubWindow(frame);
        frame->hide();
        frame->deleteLater();
    }
}

bool Workspace::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        for (const auto& [document, shown] : Windows) {
            if (shown.Frame == watched) {
                event->ignore();
                Model.Do([document = document](Exploration& exploration) { exploration.Close(*document); });
                return true;
            }
        }
    }
    return QMdiArea::eventFilter(watched, event);
}

}  // namespace quillara
