#include "workbench/desktop/window/ExploreMenu.h"

#include <QAction>
#include <QMenu>
#include <array>

#include "resources/ControlIds.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/StartupClicks.h"
#include "workbench/windows/Control.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

struct MenuRow {
    int Button;  ///< 0: a line between groups
    const char* Text;
    const char* Keys;
    const char* Tip;
};

// clang-format off
constexpr auto Steps = std::to_array<MenuRow>({
    {DrillVariablesButton, QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Drill &variables..."),       "Ctrl+D",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Choose the variables that can be drilled on")},
    {ReviewVariablesButton, QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Review variables..."),     "Ctrl+Shift+D",    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Choose variables that are shown beside")},
    {0, "", "", ""},
    {DownButton,           QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Drill &down..."),            "Ctrl+Down",       QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Keep only the cases of one category of the variable that is selected")},
    {UpButton,             QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Drill &up"),                 "Ctrl+Up",         QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Undo the step that is selected")},
    {BrushButton,          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Brush"),                    "Ctrl+B",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Drill by clicking the bars of the variable that is selected")},
    {OrderButton,          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Order of variables..."),    "Ctrl+Shift+O",    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Put the drill-down variables into another order")},
    {0, "", "", ""},
    {SelectCasesButton,    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Select cases..."),          "Ctrl+Shift+L",    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Use only the cases that meet a condition")},
    {WeightButton,         QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Weight..."),                "Ctrl+Shift+W",    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Choose a variable that weights the cases")},
    {AutoUpdateBox,        QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Auto-update all results"),  "Ctrl+U",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Results are replaced in place after each step")},
    {0, "", "", ""},
    {SaveDataButton,       QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Save the &cases that remain"), "Ctrl+Shift+R",  QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Make a data table of the cases that the steps leave, with the variables that are chosen")},
});
constexpr auto Results = std::to_array<MenuRow>({
    {SummaryButton,        QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Summary of steps"),         "Alt+1",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "A table of the steps taken")},
    {FrequenciesButton,    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Frequency tables"),         "Alt+2",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "How many cases each category has")},
    {HistogramsButton,     QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Histograms"),               "Alt+3",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "A bar for each category")},
    {PieChartsButton,      QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Pie charts"),               "Alt+4",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "A slice for each category")},
    {DescriptivesButton,   QT_TRANSLATE_NOOP("quillara::ExploreMenu", "&Descriptives"),             "Alt+5",          QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Means and more of the continuous variables")},
    {0, "", "", ""},
    {ReviewFrequenciesButton,  QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: f&requency tables"),   "Alt+Shift+2", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "How many cases each category of the review variables has")},
    {ReviewHistogramsButton,   QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: h&istograms"),         "Alt+Shift+3", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "A bar for each category of the review variables")},
    {ReviewPieChartsButton,    QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: pi&e charts"),         "Alt+Shift+4", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "A slice for each category of the review variables")},
    {ReviewDescriptivesButton, QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: descripti&ves"),       "Alt+Shift+5", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Means and more of the review variables")},
    {ReviewScatterplotButton,  QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: scatterplot &matrix"), "Alt+Shift+6", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Each review variable against each other")},
    {ReviewBoxWhiskerButton,   QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: &box and whisker"),    "Alt+Shift+7", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Where the middle and the ends of the review variables lie")},
    {Review3DHistogramsButton, QT_TRANSLATE_NOOP("quillara::ExploreMenu", "Review: &3D histograms..."),   "Alt+Shift+8", QT_TRANSLATE_NOOP("quillara::ExploreMenu", "How many cases pairs of categories have")},
});
// clang-format on

template <typename Rows>
void Fill(QMenu& menu, const Rows& rows, const std::function<void(const MenuRow&)>& add) {
    for (const MenuRow& row : rows) {
        row.Button == 0 ? static_cast<void>(menu.addSeparator()) : add(row);
    }
}

}  // namespace

ExploreMenu::ExploreMenu(ExplorationModel& model, QMenu& steps, QMenu& results, QObject* parent)
    : QObject(parent), Model(model) {
    ExploreEverything = steps.addAction(tr("Explore all variab&les"), this, &ExploreMenu::allAsked);
    ExploreEverything->setShortcut(QKeySequence(QStringLiteral("Ctrl+E")));
    ExploreEverything->setToolTip(tr("Takes every variable as its content suggests, and shows what they look like"));
    for (QMenu* menu : {&steps, &results}) {
        menu->setToolTipsVisible(true);
        const auto add = [&](const MenuRow& row) {
            QAction* action = menu->addAction(tr(row.Text), this, [this, id = row.Button] {
                // As a click: dialogs that it opens are the user's.
                const auto click = [id](Exploration& now) {
                    now.Use(now.Startup(), [&now, id](Window&) { ClickInStartup(now.Analysed(), id); });
                };
                Model.DoNext([this, click] { Model.Do(click); });
            });
            action->setShortcut(QKeySequence(QString::fromLatin1(row.Keys)));
            action->setToolTip(tr(row.Tip));
            action->setCheckable(row.Button == AutoUpdateBox);
            Actions.emplace(row.Button, action);
        };
        menu == &steps ? Fill(*menu, Steps, add) : Fill(*menu, Results, add);
    }
    connect(&model, &ExplorationModel::changed, this, &ExploreMenu::Refresh);
    connect(&model, &ExplorationModel::replaced, this, &ExploreMenu::Refresh);
    Refresh();
}

void ExploreMenu::Refresh() {
    Exploration* exploration = Model.Present();
    const bool isOpen = exploration != nullptr && !exploration->HasEnded();
    ExploreEverything->setEnabled(isOpen && exploration->Steps().empty());
    for (const auto& [button, action] : Actions) {
        const Control* control = isOpen ? &exploration->At(button) : nullptr;
        action->setEnabled(control != nullptr && control->Enabled && control->Visible);
        action->setChecked(control != nullptr && control->Checked);
    }
}

}  // namespace quillara
