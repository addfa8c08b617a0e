#include "workbench/desktop/window/ExplorationModel.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <exception>
#include <new>
#include <utility>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/windows/Window.h"

namespace quillara {

ExplorationModel::ExplorationModel(SettingsStore* settings, QObject* parent) : QObject(parent), Settings(settings) {}

ExplorationModel::~ExplorationModel() {
    blockSignals(true);
}

void ExplorationModel::Begin(std::shared_ptr<const DataTable> table, ScriptOpening opening) {
    if (IsBusy()) {
        return;
    }
    LeaveStartup();  // before the next one asks for the settings that it keeps
    std::unique_ptr<Exploration> begun;
    try {
        begun = std::make_unique<Exploration>(std::move(table), std::move(opening), *this, Settings);
    } catch (...) {
        emit changed();  // the old one has been left
        throw;
    }
    End();
    Explored = std::move(begun);
    Past = {};
    Past.Follow(*Explored);
    emit replaced();
    emit changed();
}

/// As the user leaves it; of that only the windows that go are shown.
void ExplorationModel::LeaveStartup() {
    if (Explored == nullptr || Explored->HasEnded()) {
        return;
    }
    const std::vector<CountedPointer<ResultDocument>> documents = Explored->Documents();
    {
        const QSignalBlocker quiet(this);
        Do([](Exploration& exploration) { exploration.Press(CancelCommand); });
    }
    for (const CountedPointer<ResultDocument>& document : documents) {
        if (!document->IsVisible()) {
            emit documentWent(document.Get());
        }
    }
}

bool ExplorationModel::End() {
    if (IsBusy()) {
        return false;
    }
    if (Explored != nullptr) {
        LeaveStartup();
        const std::vector<CountedPointer<ResultDocument>> documents = Explored->Documents();
        const auto ended = std::exchange(Explored, nullptr);
        for (const CountedPointer<ResultDocument>& document : documents) {
            emit documentWent(document.Get());
        }
        emit documentsTold();
        emit replaced();
        emit changed();
    }
    return true;
}

void ExplorationModel::DoNext(std::function<void()> work) {
    if (!Picks) {
        return work();
    }
    Next = std::move(work);
    emit leaveAsked();
}

bool ExplorationModel::Do(const std::function<void(Exploration&)>& action) {
    const bool isDone = Explored != nullptr && Try(action);
    if (Next && !IsBusy()) {
        QMetaObject::invokeMethod(this, std::exchange(Next, nullptr), Qt::QueuedConnection);
    }
    return isDone;
}

bool ExplorationModel::Try(const std::function<void(Exploration&)>& action) {
    try {
        action(*Explored);
    } catch (const std::bad_alloc&) {
        ShowMessage(tr("There is not enough memory for this; close other programs and try again.").toStdString());
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
    Picks = true;
    const bool isPicked = Answering.Pick && Answering.Pick(run);
    Picks = false;
    return isPicked;
}

bool ExplorationModel::Restore(const KeptSession& session) {
    const QScopedValueRollback settled(IsSettled, session.WasLeft);
    return Do([&](Exploration& exploration) { exploration.Replay(session.Entries); });
}

void ExplorationModel::TableMade(std::shared_ptr<const DataTable> table) {
    if (!IsSettled) {
        emit tableMade(std::move(table));
    }
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
