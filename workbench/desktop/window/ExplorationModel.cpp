#include "workbench/desktop/window/ExplorationModel.h"

#include <exception>
#include <new>
#include <utility>

#include "workbench/windows/Window.h"

namespace quillara {

ExplorationModel::ExplorationModel(SettingsStore* settings, QObject* parent) : QObject(parent), Settings(settings) {}

ExplorationModel::~ExplorationModel() {
    blockSignals(true);
}

void ExplorationModel::Begin(std::shared_ptr<const DataTable> table, ScriptOpening opening) {
    auto begun = std::make_unique<Exploration>(std::move(table), std::move(opening), *this, Settings);
    if (!End()) {
        return;
    }
    Explored = std::move(begun);
    Past = {};
    Past.Follow(*Explored);
    emit replaced();
    emit changed();
}

bool ExplorationModel::End() {
    if (IsBusy()) {
        return false;
    }
    if (Explored != nullptr) {
        const std::vector<CountedPointer<ResultDocument>> documents = Explored->Documents();
        const auto ended = std::exchange(Explored, nullptr);
        for (const CountedPointer<ResultDocument>& document : documents) {
            emit documentWent(document.Get());
        }
        emit replaced();
        emit changed();
    }
    return true;
}

bool ExplorationModel::Do(const std::function<void(Exploration&)>& action) {
    if (Explored == nullptr) {
        return false;
    }
    try {
        action(*Explored);
    } catch (const std::bad_alloc&) {
        ShowMessage("There is not enough memory for this; close other programs and try again.");
        return false;
    } catch (const std::exception& failure) {
        ShowMessage(failure.what());
        return false;
    }
    emit turnCame();
    return true;
}

bool ExplorationModel::WorkIn(Window& dialog) {
    emit turnCame();
    return Answering.WorkIn && Answering.WorkIn(dialog);
}

bool ExplorationModel::Pick(BrushingRun& run) {
    emit turnCame();
    return Answering.Pick && Answering.Pick(run);
}

bool ExplorationModel::GoTo(std::size_t state) {
    const bool isThere = Do([&](Exploration& exploration) { Past.GoTo(exploration, state); });
    emit changed();
    return isThere;
}

bool ExplorationModel::BackTo(std::size_t count) {
    const bool isThere = Do([&](Exploration& exploration) { Past.BackTo(exploration, count); });
    emit changed();
    return isThere;
}

void ExplorationModel::ShowMessage(std::string_view text) {
    emit turnCame();
    if (Answering.ShowMessage) {
        Answering.ShowMessage(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
}

void ExplorationModel::Changed() {
    if (Explored != nullptr) {
        Past.Follow(*Explored);
    }
    emit changed();
}

void ExplorationModel::WorkBegan(std::string_view text, std::int32_t total) {
    emit workBegan(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), total);
}

}  // namespace quillara
