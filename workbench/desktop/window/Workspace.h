#pragma once

#include <QMdiArea>
#include <QPointer>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/desktop/results/ViewOptions.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/exploration/SubjectKeys.h"
#include "workbench/exploration/WindowPlaces.h"

class QMenu;

namespace quillara {

class BarPicking;
class DocumentView;
class ExplorationModel;
struct BrushingRun;

/// Where result windows stand: one for each document of the exploration. A window stays with what it is about, also
/// when the analysis has put that into another document. Tiled windows stay so, whatever comes, goes or grows, until
/// one is moved: a dashboard.
class Workspace : public QMdiArea {
    Q_OBJECT

  public:
    /// The model outlives it.
    explicit Workspace(ExplorationModel& model, QWidget* parent = nullptr);
    ~Workspace() override;

    /// The view of a document; null when it has none.
    [[nodiscard]] DocumentView* Find(ResultDocument& document) const;
    /// Lets the user pick a bar of a graph in its window, in front of the others; false: the user has left.
    bool PickBar(BrushingRun& run);

    void Tile();
    void Cascade();
    void SetTabbed(bool isTabbed);
    [[nodiscard]] bool IsTiled() const { return Tiled; }
    /// How the windows of the exploration's documents stand, and how they are to stand.
    [[nodiscard]] WindowArrangement Arrangement() const;
    void Arrange(const WindowArrangement& windows);
    /// Closes all documents.
    void CloseAll();
    /// Lets the user choose documents for a report, which is saved or printed.
    void MakeReport();
    void SetOptions(const ViewOptions& options);
    [[nodiscard]] const ViewOptions& Options() const { return Look; }

    /// Fills a menu with what can be done with windows, and the windows, whenever it opens. The shortcuts work from now
    /// on.
    void FillMenu(QMenu& menu);

  signals:
    /// Bars are picked, while no other command can be given, or no longer.
    void pickingChanged(bool isPicking);
    /// The user has moved a window, or had all of them arranged.
    void arranged();

  protected:
    /// A window that the user closes closes its document; one that the user moves leaves the tiles.
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Shown {
        CountedPointer<ResultDocument> Document;
        QMdiSubWindow* Frame;
        DocumentView* View;
        SubjectKey Subject;  // that the window shows
        bool HasChanged = false;  // what the document holds isn't shown yet
        bool HasGone = false;  // the document has
        bool ComesToFront = false;
    };

    void Add(ResultDocument& document);
    void Place(QMdiSubWindow& frame, const ResultDocument& document);
    void Note(const ResultDocument& document, bool Shown::*what);
    void Settle();
    void Refresh(Shown& shown);
    void FollowSubjects();
    void TakePlaceBefore(const Shown& moved);
    void Remove(const Shown& shown);
    void LeaveTab();
    [[nodiscard]] bool IsArrangeable(const QMdiSubWindow& frame) const;
    void Close(QMdiSubWindow& frame);
    void BringToFront(QMdiSubWindow& frame);
    void EndPicking();
    void RemoveBars(const DocumentView* except);
    void BrushOnAfterStepUp();
    void PlaceTiles();
    void PaintHint();
    void Center(QMdiSubWindow& frame);
    [[nodiscard]] std::optional<QRect> PlaceBefore(const SubjectKey& subject) const;
    [[nodiscard]] std::vector<Shown>::const_iterator PlaceOf(const ResultDocument& document) const;
    [[nodiscard]] std::vector<Shown>::const_iterator PlaceOf(const QObject* frame) const;
    void ListWindows(QMenu& menu);

    ExplorationModel& Model;
    std::vector<Shown> Windows;  // in the order in which they came
    std::map<SubjectKey, QRect> PlacesBefore;  // of windows that have gone
    ViewOptions Look;
    BarPicking* Picking = nullptr;
    QMdiSubWindow* PickedIn = nullptr;
    QPointer<QMdiSubWindow> Floating;  // of the graph to be brushed, in front of the tiles
    bool Tiled = false;
    bool IsPlacing = false;
};

}  // namespace quillara
