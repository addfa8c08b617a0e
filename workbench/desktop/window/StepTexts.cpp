#include "workbench/desktop/window/StepTexts.h"

#include <QCoreApplication>
#include <QStringList>

namespace quillara {
namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(quillara::StepTexts)
};

QString Conditions(const std::vector<StepTaken>& steps) {
    QStringList conditions;
    for (const StepTaken& step : steps) {
        conditions.append(QString::fromStdString(step.Condition()));
    }
    return conditions.join(QStringLiteral(", "));
}

}  // namespace

QString ChangeText(const ExplorationHistory::Change& change) {
    if (change.Undone.empty()) {
        return Text::tr("Drill down: %1").arg(Conditions(change.Taken));
    }
    if (change.Taken.empty()) {
        return Text::tr("Drill up: %1").arg(Conditions(change.Undone));
    }
    return Text::tr("Drill up: %1; down: %2").arg(Conditions(change.Undone), Conditions(change.Taken));
}

QString StateText(const ExplorationHistory::State& state) {
    return state.Steps.empty() ? Text::tr("All cases") : Conditions(state.Steps);
}

}  // namespace quillara
