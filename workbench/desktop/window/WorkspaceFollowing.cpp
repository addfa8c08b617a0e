// Windows follow what happens to documents: once all of a command is told, so that each stays with its subject.

#include <QApplication>
#include <QMdiSubWindow>
#include <QTabBar>
#include <algorithm>
#include <utility>

#include "workbench/desktop/brushing/BarPicking.h"
#include "workbench/desktop/results/DocumentView.h"
#include "workbench/desktop/results/ResultTitles.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {

void Workspace::Note(const ResultDocument& document, bool Shown::*what) {
    if (const auto found = PlaceOf(document); found != Windows.end()) {
        Windows[static_cast<std::size_t>(found - Windows.begin())].*what = true;
    }
}

void Workspace::Settle() {
    FollowSubjects();
    const auto gone =
        std::stable_partition(Windows.begin(), Windows.end(), [](const Shown& shown) { return !shown.HasGone; });
    const std::vector<Shown> went(gone, Windows.end());
    Windows.erase(gone, Windows.end());
    std::ranges::for_each(went, [this](const Shown& shown) { Remove(shown); });
    for (Shown& shown : Windows) {
        if (std::exchange(shown.HasChanged, false)) {
            Refresh(shown);
        }
        if (std::exchange(shown.ComesToFront, false)) {
            BringToFront(*shown.Frame);
        }
    }
    if (!went.empty()) {
        PlaceTiles();
        viewport()->update();
    }
}

/// Lets documents change places, so that each stands where its subject has been shown.
void Workspace::FollowSubjects() {
    std::vector<SubjectKey> shown;
    std::vector<MovedSubject> moved;
    std::vector<CountedPointer<ResultDocument>> documents;
    for (const Shown& window : Windows) {
        if (!window.HasGone) {
            moved.push_back({SubjectKeyOf(*window.Document), shown.size()});
            documents.push_back(window.Document);
        }
        shown.push_back(window.Subject);
    }
    const std::vector<std::size_t> places = WindowsOfSubjects(shown, moved);
    for (Shown& window : Windows) {
        window.HasGone = true;
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        Shown& window = Windows[places[i]];
        window.HasGone = false;
        if (window.Document.Get() != documents[i].Get()) {
            window.Document = documents[i];
            window.HasChanged = true;
            TakePlaceBefore(window);
        }
    }
}

/// A window that another subject moves into goes where that one was.
void Workspace::TakePlaceBefore(const Shown& moved) {
    const SubjectKey subject = SubjectKeyOf(*moved.Document);
    const std::optional<QRect> before = subject == moved.Subject ? std::nullopt : PlaceBefore(subject);
    if (before && IsArrangeable(*moved.Frame)) {
        PlacesBefore[moved.Subject] = moved.Frame->geometry();
        IsPlacing = true;
        moved.Frame->setGeometry(*before);
        IsPlacing = false;
    }
}

/// Where a window of a subject stood that has gone, unless another one stands there now.
std::optional<QRect> Workspace::PlaceBefore(const SubjectKey& subject) const {
    const auto found = PlacesBefore.find(subject);
    const bool isFree = found != PlacesBefore.end() && std::ranges::none_of(Windows, [&](const Shown& shown) {
                            return shown.Frame->pos() == found->second.topLeft();
                        });
    return isFree ? std::optional(found->second) : std::nullopt;
}

void Workspace::Refresh(Shown& shown) {
    shown.Subject = SubjectKeyOf(*shown.Document);
    shown.Frame->setWindowTitle(ShortTitleOf(*shown.Document));
    shown.View->Show(*shown.Document);
}

void Workspace::Remove(const Shown& shown) {
    QMdiSubWindow* frame = shown.Frame;
    if (frame == PickedIn && Picking != nullptr) {
        Picking->Leave();
    }
    if (IsArrangeable(*frame)) {
        PlacesBefore[shown.Subject] = frame->geometry();
    }
    frame->removeEventFilter(this);
    LeaveTab();
    removeSubWindow(frame);
    frame->hide();
    frame->deleteLater();
}

/// The base class takes a tab away while its lists of windows disagree. A focus on the tab's button would go on into
/// another window at that moment, and activate it by a place that it no longer has.
void Workspace::LeaveTab() {
    for (auto* tabs : findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (tabs->isAncestorOf(QApplication::focusWidget())) {
            tabs->setFocus();
        }
    }
}

bool Workspace::IsArrangeable(const QMdiSubWindow& frame) const {
    return viewMode() == SubWindowView && !frame.isMinimized() && !frame.isMaximized();
}

}  // namespace quillara
