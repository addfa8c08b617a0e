// Where result windows stand: side by side, one behind the other, as tabs, or as the user has moved them.

#include <QMdiSubWindow>
#include <QScrollBar>
#include <utility>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

// Of a tile that a chart can be read in.
constexpr int LeastLetters = 28;
constexpr int LeastLines = 11;

WindowPlace PlaceFrom(const QRect& rectangle) {
    return {rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height()};
}

QRect RectangleOf(const WindowPlace& place) {
    return {place.X, place.Y, place.Width, place.Height};
}

WindowSize SizeOf(const QSize& size) {
    return {size.width(), size.height()};
}

std::vector<CountedPointer<ResultDocument>> DocumentsOf(Exploration* exploration) {
    return exploration == nullptr ? std::vector<CountedPointer<ResultDocument>>() : exploration->Documents();
}

}  // namespace

/// What was there before comes back to its place. A graph to be brushed takes the place of the one before it, where the
/// pointer is; others find a free place.
void Workspace::Place(QMdiSubWindow& frame, const ResultDocument& document) {
    const auto before = PlaceBefore(SubjectKeyOf(document));
    if (before && !document.IsBrushable()) {
        return frame.setGeometry(*before);
    }
    std::vector<WindowPlace> others;
    for (const Shown& shown : Windows) {
        if (document.IsBrushable() && shown.Frame == Floating) {
            return frame.setGeometry(shown.Frame->geometry());
        }
        if (!shown.Frame->isMinimized()) {
            others.push_back(PlaceFrom(shown.Frame->geometry()));
        }
    }
    if (document.IsBrushable() && Tiled) {
        return Center(frame);
    }
    const QSize wanted = frame.sizeHint();
    frame.setGeometry(RectangleOf(FreePlace(others, SizeOf(wanted), SizeOf(viewport()->size()))));
}

/// Large enough for bars to be pointed at.
void Workspace::Center(QMdiSubWindow& frame) {
    constexpr double share = 0.6;
    const QRect area = viewport()->rect();
    QRect place({}, (QSizeF(area.size()) * share).toSize().expandedTo(frame.sizeHint()).boundedTo(area.size()));
    place.moveCenter(area.center());
    frame.setGeometry(place);
}

void Workspace::Tile() {
    SetTabbed(false);
    Tiled = true;
    PlaceTiles();
    emit arranged();
}

void Workspace::Cascade() {
    SetTabbed(false);
    Tiled = false;
    cascadeSubWindows();
}

void Workspace::SetTabbed(bool isTabbed) {
    Tiled = Tiled && !isTabbed;
    setViewMode(isTabbed ? TabbedView : SubWindowView);
    emit arranged();
}

void Workspace::PlaceTiles() {
    if (!Tiled || IsPlacing || viewMode() == TabbedView) {
        return;
    }
    std::vector<QMdiSubWindow*> frames;
    for (const Shown& shown : Windows) {
        if (IsArrangeable(*shown.Frame) && shown.Frame != Floating) {
            frames.push_back(shown.Frame);
        }
    }
    IsPlacing = true;
    const QSize least(fontMetrics().averageCharWidth() * LeastLetters, fontMetrics().height() * LeastLines);
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const std::vector<WindowPlace> places = TiledPlaces(frames.size(), SizeOf(viewport()->size()), SizeOf(least));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i]->setGeometry(RectangleOf(places[i]).translated(-scrolled));
    }
    IsPlacing = false;
}

void Workspace::resizeEvent(QResizeEvent* event) {
    const bool wasPlacing = std::exchange(IsPlacing, true);
    QMdiArea::resizeEvent(event);
    IsPlacing = wasPlacing;
    PlaceTiles();
}

WindowArrangement Workspace::Arrangement() const {
    WindowArrangement windows{Tiled, viewMode() == TabbedView};
    for (const auto& document : DocumentsOf(Model.Present())) {
        const auto found = PlaceOf(*document);
        if (found != Windows.end() && found->Frame == activeSubWindow()) {
            windows.Front = windows.Places.size();
        }
        const bool isPlaced = found != Windows.end() && IsArrangeable(*found->Frame);
        windows.Places.push_back(isPlaced ? PlaceFrom(found->Frame->geometry()) : WindowPlace());
    }
    return windows;
}

void Workspace::Arrange(const WindowArrangement& windows) {
    const std::vector<CountedPointer<ResultDocument>> documents = DocumentsOf(Model.Present());
    if (windows.Front && *windows.Front < documents.size()) {
        if (const auto front = PlaceOf(*documents[*windows.Front]); front != Windows.end()) {
            setActiveSubWindow(front->Frame);
        }
    }
    if (windows.AreTiled) {
        return Tile();
    }
    Tiled = false;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        const auto found = PlaceOf(*documents[i]);
        if (found != Windows.end() && i < windows.Places.size() && windows.Places[i].Width > 0) {
            found->Frame->setGeometry(RectangleOf(windows.Places[i]));
        }
    }
    SetTabbed(windows.AreTabs);
}

}  // namespace quillara
