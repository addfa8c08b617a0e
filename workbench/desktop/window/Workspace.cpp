#include "workbench/desktop/window/Workspace.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/desktop/brushing/BarPicking.h"
#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/results/ReportDialog.h"
#include "workbench/desktop/results/ResultTitles.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/WindowPlaces.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

/// The step in force on a variable, for people.
QString StepOn(Exploration& exploration, const std::string& variable) {
    const std::vector<StepTaken> steps = exploration.Steps();
    const auto step = std::ranges::find(steps, variable, &StepTaken::Variable);
    return QString::fromStdString(step == steps.end() ? variable : step->Condition());
}

QString NewestStep(Exploration& exploration) {
    const std::vector<StepTaken> steps = exploration.Steps();
    return steps.empty() ? QString() : QString::fromStdString(steps.back().Condition());
}

}  // namespace

Workspace::Workspace(ExplorationModel& model, QWidget* parent) : QMdiArea(parent), Model(model) {
    setObjectName(QStringLiteral("workspace"));
    setAccessibleName(tr("Results"));
    setTabsClosable(true);
    setTabsMovable(true);
    setDocumentMode(true);
    setBackground(palette().color(QPalette::Window));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(&model, &ExplorationModel::documentAppeared, this, [this](ResultDocument* document) { Add(*document); });
    connect(&model, &ExplorationModel::documentChanged, this,
            [this](ResultDocument* document) { Note(*document, &Shown::HasChanged); });
    connect(&model, &ExplorationModel::documentWent, this,
            [this](ResultDocument* document) { Note(*document, &Shown::HasGone); });
    connect(&model, &ExplorationModel::documentCameToFront, this,
            [this](const ResultDocument* document) { Note(*document, &Shown::ComesToFront); });
    connect(&model, &ExplorationModel::documentsTold, this, &Workspace::Settle);
    connect(&model, &ExplorationModel::replaced, this, [this] { PlacesBefore.clear(); });
    connect(&model, &ExplorationModel::changed, this, [this] { EndPicking(); });
    connect(&model, &ExplorationModel::leaveAsked, this, [this] {
        if (Picking != nullptr) {
            Picking->Leave();
        }
    });
}

Workspace::~Workspace() {
    if (Picking != nullptr) {
        Picking->Leave();
    }
}

std::vector<Workspace::Shown>::const_iterator Workspace::PlaceOf(const ResultDocument& document) const {
    return std::ranges::find_if(Windows, [&](const Shown& shown) { return shown.Document.Get() == &document; });
}

std::vector<Workspace::Shown>::const_iterator Workspace::PlaceOf(const QObject* frame) const {
    return std::ranges::find_if(Windows, [&](const Shown& shown) { return shown.Frame == frame; });
}

DocumentView* Workspace::Find(ResultDocument& document) const {
    const auto found = PlaceOf(document);
    return found == Windows.end() ? nullptr : found->View;
}

void Workspace::Add(ResultDocument& document) {
    DocumentView* view = ViewOf(document, Model, nullptr);
    view->SetOptions(Look);
    auto* frame = new QMdiSubWindow;
    frame->setWidget(view);
    frame->setAttribute(Qt::WA_DeleteOnClose, false);
    frame->setWindowTitle(ShortTitleOf(document));
    frame->setWindowIcon(IconOf(document));
    Place(*frame, document);
    Windows.push_back({CountedPointer<ResultDocument>::Share(&document), frame, view, SubjectKeyOf(document)});
    if (document.IsBrushable()) {
        Floating = frame;
    }
    const QRect place = frame->geometry();
    IsPlacing = true;
    addSubWindow(frame);
    frame->setGeometry(place);
    frame->installEventFilter(this);
    frame->show();
    IsPlacing = false;
    PlaceTiles();
}

/// A bar that is picked stays within its command: the window goes when that has ended.
void Workspace::Close(QMdiSubWindow& frame) {
    if (Picking != nullptr && &frame == PickedIn) {
        Picking->Leave();
        QMetaObject::invokeMethod(&frame, &QWidget::close, Qt::QueuedConnection);
        return;
    }
    if (const auto found = PlaceOf(&frame); found != Windows.end()) {
        const CountedPointer<ResultDocument> document = found->Document;
        Model.Do([&](Exploration& exploration) { exploration.Close(*document); });
    }
}

void Workspace::CloseAll() {
    const std::vector<Shown> all = Windows;
    for (const Shown& shown : all) {
        Close(*shown.Frame);
    }
}

void Workspace::BringToFront(QMdiSubWindow& frame) {
    if (frame.isMinimized()) {
        frame.showNormal();
    }
    setActiveSubWindow(&frame);
}

bool Workspace::PickBar(BrushingRun& run) {
    const auto found = PlaceOf(run.Document);
    auto* view = found == Windows.end() ? nullptr : qobject_cast<ChartResultView*>(found->View);
    if (view == nullptr || SeriesOf(*run.Document.Graph()) == nullptr) {
        return false;
    }
    BringToFront(*found->Frame);
    PickedIn = found->Frame;
    if (std::exchange(Floating, PickedIn) != PickedIn && Tiled) {
        Center(*PickedIn);
        PlaceTiles();
    }
    RemoveBars(view);
    Exploration& exploration = *Model.Present();
    const std::string current = exploration.CurrentVariable(DrillUpListControl);
    const QString stepUp = current.empty() ? tr("Undoes the newest step, %1 (U)").arg(NewestStep(exploration))
                                           : tr("Undoes the step %1 (U)").arg(StepOn(exploration, current));
    BarPicking picking(run, *view, stepUp, !current.empty());
    Picking = &picking;
    emit pickingChanged(true);
    const bool isPicked = picking.Run();
    Picking = nullptr;
    if (picking.IsLeftForStepUp()) {
        QMetaObject::invokeMethod(this, &Workspace::BrushOnAfterStepUp, Qt::QueuedConnection);
    }
    return isPicked;
}

/// Undoes the newest step by its button, and goes on picking.
void Workspace::BrushOnAfterStepUp() {
    Model.Do([](Exploration& exploration) {
        const std::vector<StepTaken> steps = exploration.Steps();
        if (!steps.empty()) {
            exploration.Up(steps.back().Variable);
            exploration.Press(BrushButton);
        }
    });
}

/// Between two cycles the bar stays, and goes when the command has ended.
void Workspace::EndPicking() {
    if (PickedIn == nullptr || Picking != nullptr || Model.IsBusy()) {
        return;
    }
    PickedIn = nullptr;
    Floating.clear();
    RemoveBars(nullptr);
    PlaceTiles();
    emit pickingChanged(false);
}

void Workspace::RemoveBars(const DocumentView* except) {
    for (const Shown& shown : Windows) {
        if (shown.View != except) {
            delete shown.View->findChild<BrushingBar*>();
        }
    }
}

void Workspace::SetOptions(const ViewOptions& options) {
    Look = options;
    for (const Shown& shown : Windows) {
        shown.View->SetOptions(options);
    }
}

void Workspace::MakeReport() {
    std::vector<CountedPointer<ResultDocument>> documents;
    for (const Shown& shown : Windows) {
        documents.push_back(shown.Document);
    }
    ReportDialog(Model, documents, this).exec();
}

bool Workspace::eventFilter(QObject* watched, QEvent* event) {
    const auto found = PlaceOf(watched);
    if (found == Windows.end()) {
        return QMdiArea::eventFilter(watched, event);
    }
    if (event->type() == QEvent::Close) {
        event->ignore();
        Close(*found->Frame);
        return true;
    }
    const bool isMoved = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (isMoved && !IsPlacing && IsArrangeable(*found->Frame) && found->Frame != Floating) {
        Tiled = false;
        emit arranged();
    }
    return QMdiArea::eventFilter(watched, event);
}

void Workspace::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        setBackground(palette().color(QPalette::Window));
    }
}

bool Workspace::viewportEvent(QEvent* event) {
    const bool isDone = QMdiArea::viewportEvent(event);
    if (event->type() == QEvent::Paint && Windows.empty()) {
        PaintHint();
    }
    return isDone;
}

void Workspace::PaintHint() {
    const bool isOpen = Model.Present() != nullptr && !Model.Present()->HasEnded();
    const QString hint =
        isOpen ? tr("Results appear here.\n\nChoose variables in the Drill-Down dialog, then press a button such as "
                    "Histograms or Frequency tables.")
               : tr("Open a data file to begin.");
    QPainter painter(viewport());
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    painter.setFont(large);
    painter.setPen(palette().color(QPalette::WindowText));
    constexpr int rim = 40;
    painter.drawText(viewport()->rect().adjusted(rim, rim, -rim, -rim), Qt::AlignCenter | Qt::TextWordWrap, hint);
}

}  // namespace quillara
