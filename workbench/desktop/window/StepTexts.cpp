#include "workbench/desktop/window/StepTexts.h"

#include <QCoreApplication>
#include <QStringList>

namespace quillara {
namespace {

QString Translated(const char* text) {
    return QCoreApplication::translate("StepTexts", text);
}

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
        return Translated("Drill down: %1").arg(Conditions(change.Taken));
    }
    if (change.Taken.empty()) {
        return Translated("Drill up: %1").arg(Conditions(change.Undone));
    }
    return Translated("Drill up: %1; down: %2").arg(Conditions(change.Undone), Conditions(change.Taken));
}

QString StateText(const ExplorationHistory::State& state) {
    return state.Steps.empty() ? Translated("All cases") : Conditions(state.Steps);
}

}  // namespace quillara
