#include "workbench/desktop/window/GuideBar.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>
#include <QToolButton>

#include "resources/ControlIds.h"
#include "workbench/desktop/dialogs/ElidedLabel.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/windows/Control.h"
#include "workbench/windows/Window.h"

namespace quillara {
GuideBar::GuideBar(ExplorationModel& model, QWidget* parent)
    : QFrame(parent),
      Model(model),
      Text(new ElidedLabel(this)),
      First(new QPushButton(this)),
      Second(new QPushButton(this)) {
    setObjectName(QStringLiteral("guide"));
    setAccessibleName(tr("What comes next"));
    setFrameShape(QFrame::StyledPanel);
    First->setObjectName(QStringLiteral("guideFirst"));
    Second->setObjectName(QStringLiteral("guideSecond"));
    auto* away = new QToolButton(this);
    away->setText(QStringLiteral("×"));
    away->setToolTip(tr("Put this away"));
    away->setAccessibleName(tr("Put this away"));
    away->setAutoRaise(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    for (QWidget* widget : std::initializer_list<QWidget*>{Text, First, Second}) {
        layout->addWidget(widget);
    }
    layout->addStretch(1);
    layout->addWidget(away);
    connect(away, &QToolButton::clicked, this, [this] {
        IsPutAway = true;
        PutAwayWith = Model.Present()->CasesInForceNow();
        hide();
    });
    connect(&model, &ExplorationModel::replaced, this, &GuideBar::Begin);
    connect(&model, &ExplorationModel::changed, this, &GuideBar::Refresh);
    const auto follow = [this] {
        if (!Model.IsBusy()) {  // in the midst of a pass nothing may be counted beside it
            Refresh();
        }
    };
    connect(&model, &ExplorationModel::documentWent, this, follow, Qt::QueuedConnection);
    hide();
}

void GuideBar::Begin() {
    IsPutAway = false;
    PutAwayWith.reset();
    Refresh();
}

void GuideBar::Refresh() {
    Exploration* exploration = Model.Present();
    if (exploration == nullptr || exploration->HasEnded()) {
        hide();
        return;
    }
    if (exploration->HasOldResults() && PutAwayWith != exploration->CasesInForceNow()) {
        TellOfOldResults();
        return;
    }
    if (IsPutAway || !exploration->Documents().empty()) {
        hide();
        return;
    }
    const bool hasVariables = exploration->At(HistogramsButton).Enabled;
    if (!hasVariables && !exploration->Steps().empty()) {  // all of them have been drilled on
        hide();
        return;
    }
    First->disconnect(this);
    Second->disconnect(this);
    hasVariables ? AskForResults() : AskForVariables();
    First->show();
    Second->show();
    show();
}

void GuideBar::TellOfOldResults() {
    Text->setText(tr("The open results show the cases and the weight of before; they follow at the next step."));
    First->hide();
    Second->hide();
    show();
}

void GuideBar::AskForVariables() {
    const DataTable& table = Model.Present()->Table();
    const QString variables =
        table.Variables.size() == 1 ? tr("1 variable") : tr("%1 variables").arg(table.Variables.size());
    Text->setText(tr("%1: %2 cases, %3.")
                      .arg(QString::fromStdString(table.FileName), QLocale().toString(table.Cases), variables));
    First->setText(tr("Explore &all variables"));
    First->setToolTip(tr("Takes every variable as its content suggests, and shows what they look like"));
    Second->setText(tr("C&hoose variables..."));
    Second->setToolTip(tr("Choose the variables that you are curious about"));
    connect(First, &QPushButton::clicked, this, &GuideBar::allAsked);
    connect(Second, &QPushButton::clicked, this, [this] {
        Model.Do([](Exploration& now) {
            now.Use(now.Startup(), [](Window& window) { window.Click(DrillVariablesButton); });
        });
    });
}

void GuideBar::AskForResults() {
    const auto press = [this](QPushButton* button, int id) {
        connect(button, &QPushButton::clicked, this,
                [this, id] { Model.Do([id](Exploration& now) { now.Press(id); }); });
    };
    Text->setText(tr("Now look at them, or choose one in the list and press Down."));
    First->setText(tr("Show h&istograms"));
    First->setToolTip(
        tr("A bar for each category, a chart for each variable; the right button on a bar keeps its cases"));
    Second->setText(tr("Show frequency &tables"));
    Second->setToolTip(tr("How many cases each category has, a table for each variable"));
    press(First, HistogramsButton);
    press(Second, FrequenciesButton);
}

}  // namespace quillara
