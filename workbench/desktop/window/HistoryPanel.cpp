#include "workbench/desktop/window/HistoryPanel.h"

#include <QLocale>
#include <QSignalBlocker>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/desktop/window/StepTexts.h"
#include "workbench/exploration/Exploration.h"

namespace quillara {
namespace {

QString RowText(const ExplorationHistory::State& state) {
    const QString text = StateText(state);
    return state.Left ? text + QStringLiteral("   ") + QLocale().toString(state.Left->Cases) : text;
}

}  // namespace

HistoryPanel::HistoryPanel(ExplorationModel& model, QWidget* parent) : QListWidget(parent), Model(model) {
    setObjectName(QStringLiteral("history"));
    setAccessibleName(tr("History"));
    setToolTip(tr("Click a state to go back to it"));
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(&model, &ExplorationModel::changed, this, &HistoryPanel::Refresh);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { GoTo(row(item)); });
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { GoTo(row(item)); });
}

void HistoryPanel::Refresh() {
    const QSignalBlocker quiet(this);
    clear();
    if (Model.Present() == nullptr || Model.Present()->HasEnded()) {
        return;
    }
    const ExplorationHistory& past = Model.History();
    for (std::size_t place = 0; place < past.States().size(); ++place) {
        auto* item = new QListWidgetItem(RowText(past.States()[place]), this);
        item->setToolTip(item->text());
        if (place > past.Present()) {
            item->setForeground(palette().brush(QPalette::PlaceholderText));
        }
    }
    setCurrentRow(static_cast<int>(past.Present()));
    scrollToItem(currentItem());
}

void HistoryPanel::GoTo(int row) {
    if (row >= 0 && static_cast<std::size_t>(row) != Model.History().Present()) {
        Model.DoNext([this, row] { Model.GoTo(static_cast<std::size_t>(row)); });
    }
}

}  // namespace quillara
