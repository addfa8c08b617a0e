#include "workbench/desktop/dialogs/SmallHostViews.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/desktop/dialogs/MarkIcons.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/RowSearch.h"
#include "workbench/desktop/window/FileReading.h"
#include "workbench/desktop/window/LongWork.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/WorkPanel.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/exploration/BoundaryPreview.h"

namespace quillara {
namespace {

QHBoxLayout* Ends(const DialogView& view) {
    auto* ends = new QHBoxLayout;
    ends->addStretch();
    ends->addWidget(view.Find(OkCommand));
    ends->addWidget(view.Find(CancelCommand));
    return ends;
}

ReportList& RoomyList(const DialogView& view, int id, int lines) {
    auto& list = *static_cast<ReportList*>(view.Find(id));
    list.FitColumns(list);
    list.SetUsualRoom(60, lines);
    return list;
}

}  // namespace

WeightView::WeightView(Window& window, Act act, QWidget* parent) : DialogView(window, std::move(act), parent) {
    ReportList& list = RoomyList(*this, WeightDialog::VariableList, 14);
    Sought = new RowSearch(list, this);
    auto* all = new QVBoxLayout;
    all->addWidget(Find(WeightDialog::NoWeight));
    all->addWidget(Find(NoControlId));
    all->addWidget(Sought);
    all->addWidget(&list, 1);
    all->addWidget(Find(WeightDialog::DeclaredWeight));
    all->addLayout(Ends(*this));
    LeaveToLayout(all);
    connect(Sought, &QLineEdit::textChanged, this, &WeightView::Refresh);
    connect(Sought, &RowSearch::rowTaken, this, [this](int row) { ChooseRow(WeightDialog::VariableList, row); });
    Refresh();
}

void WeightView::Refresh() {
    DialogView::Refresh();
    if (TheWindow() != nullptr && Sought != nullptr) {
        const Control& list = TheWindow()->At(WeightDialog::VariableList);
        Sought->setEnabled(list.Enabled);
        Sought->Apply(list.ReportRows);
    }
}

OpenDataView::OpenDataView(Window& window, OpenDataDialog& dialog, Act act, QWidget* parent)
    : DialogView(window, std::move(act), parent), Dialog(dialog) {
    auto* path = static_cast<QLineEdit*>(Find(OpenDataDialog::Path));
    auto* files = new QFileSystemModel(this);
    files->setRootPath(QString());
    auto* completer = new QCompleter(files, this);
    path->setCompleter(completer);
    // With nothing left to complete, Return opens the file.
    const auto hideOffers = [path, completer] {
        if (QFileInfo(path->text()).isFile()) {
            completer->popup()->hide();
        }
    };
    connect(path, &QLineEdit::textEdited, this, hideOffers, Qt::QueuedConnection);
    connect(files, &QFileSystemModel::directoryLoaded, this, hideOffers, Qt::QueuedConnection);
    path->setMinimumWidth(40 * fontMetrics().averageCharWidth());
    auto* browse = new QPushButton(MarkIcon("`"), tr("&Browse..."), this);
    browse->setToolTip(tr("Chooses a data file among those of this computer"));
    browse->setAccessibleName(tr("Browse"));
    connect(browse, &QPushButton::clicked, this, &OpenDataView::Browse);
    Chooser = browse;
    Recent = ListRecent();
    auto* row = new QHBoxLayout;
    row->addWidget(path, 1);
    row->addWidget(browse);
    auto* all = new QVBoxLayout;
    all->addWidget(Find(OpenDataDialog::FromFile));
    all->addLayout(row);
    all->addWidget(Recent, 1);
    all->addWidget(Find(OpenDataDialog::FromRun));
    all->addWidget(&RoomyList(*this, OpenDataDialog::TableList, 6), 1);
    all->addLayout(Ends(*this));
    LeaveToLayout(all);
    Refresh();
    path->setFocus();
}

void OpenDataView::Refresh() {
    DialogView::Refresh();
    if (TheWindow() != nullptr && Recent != nullptr) {
        const bool isFile = TheWindow()->At(OpenDataDialog::Path).Enabled;
        Chooser->setEnabled(isFile);
        Recent->setEnabled(isFile);
    }
}

/// A click takes a path; a double click opens it.
QListWidget* OpenDataView::ListRecent() {
    auto* list = new QListWidget(this);
    list->addItems(RecentFiles::All());
    list->setVisible(list->count() > 0);
    list->setMinimumHeight(4 * fontMetrics().lineSpacing());
    list->setTextElideMode(Qt::ElideMiddle);
    list->setAccessibleName(tr("Recent files"));
    list->setToolTip(tr("The files that were open last. A double click opens one"));
    connect(list, &QListWidget::itemSelectionChanged, this, [this, list] {
        if (list->currentItem() != nullptr && list->currentItem()->isSelected()) {  // the focus alone takes none
            static_cast<QLineEdit*>(Find(OpenDataDialog::Path))->setText(list->currentItem()->text());
        }
    });
    connect(list, &QListWidget::itemDoubleClicked, this, [this](const QListWidgetItem* item) { Open(item->text()); });
    return list;
}

/// False: the user has cancelled it.
bool OpenDataView::ReadFirst() {
    const std::string& path = TheWindow()->At(OpenDataDialog::Path).Text;
    if (path.empty() || !TheWindow()->At(OpenDataDialog::FromFile).Checked) {
        return true;
    }
    WorkPanel panel(window());
    LongWork work(panel);
    TableReading::Outcome read = ReadWhileAlive(QString::fromStdString(path), work);
    const bool isDone = read.Table != nullptr || !read.Failure.empty();
    if (isDone) {
        Dialog.Offer({path, std::move(read.Table), std::move(read.Remarks), std::move(read.Failure)});
    }
    return isDone;
}

/// A file that has been opened is remembered.
void OpenDataView::Click(int id) {
    Commit();
    if (id == OkCommand && TheWindow() != nullptr && !ReadFirst()) {
        return;
    }
    DialogView::Click(id);
    Window* window = TheWindow();
    if (window != nullptr && window->CloseResult() == OkCommand && window->At(OpenDataDialog::FromFile).Checked) {
        RecentFiles::Add(QString::fromStdString(window->At(OpenDataDialog::Path).Text));
    }
}

void OpenDataView::Browse() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Open data"));
    if (!path.isEmpty()) {
        Open(path);
    }
}

void OpenDataView::Open(const QString& path) {
    static_cast<QLineEdit*>(Find(OpenDataDialog::Path))->setText(path);
    Click(OkCommand);
}

OrderView::OrderView(Window& window, Act act, QWidget* parent) : DialogView(window, std::move(act), parent) {
    const auto connectList = [this](int list, int button) {
        connect(static_cast<QListWidget*>(Find(list)), &QListWidget::itemDoubleClicked, this,
                [this, button] { OrderView::Click(button); });
    };
    connectList(CurrentOrderList, PlaceButton);
    connectList(NewOrderList, TakeBackButton);
}

void OrderView::Click(int id) {
    const int list = id == PlaceButton ? CurrentOrderList : id == TakeBackButton ? NewOrderList : NoControlId;
    const int row = list == NoControlId ? -1 : TheWindow()->At(list).Selected;
    DialogView::Click(id);
    const int rows = row < 0 ? 0 : static_cast<int>(TheWindow()->At(list).Rows.size());
    if (rows > 0) {
        ChooseRow(list, std::min(row, rows - 1));
    }
}

BoundariesView::BoundariesView(Window& window, Act act, QWidget* parent)
    : DialogView(window, std::move(act), parent), Preview(new QLabel(this)) {
    Preview->setTextFormat(Qt::PlainText);
    Preview->setWordWrap(true);
    Preview->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Preview->setMinimumHeight(2 * fontMetrics().lineSpacing());
    Preview->setAccessibleName(tr("Ranges"));
    auto* typed = static_cast<QPlainTextEdit*>(Find(BoundariesEdit));
    typed->setMinimumSize(50 * fontMetrics().averageCharWidth(), 3 * fontMetrics().lineSpacing());
    auto* all = new QGridLayout;
    auto* heading = new QHBoxLayout;
    heading->addWidget(Find(BoundariesLabel));
    heading->addWidget(Find(BoundariesVariableCaption), 1);
    all->addLayout(heading, 0, 0);
    all->addWidget(typed, 1, 0, 2, 1);
    all->addWidget(Find(OkCommand), 0, 1);
    all->addWidget(Find(CancelCommand), 1, 1);
    all->addWidget(Preview, 3, 0, 1, 2);
    for (int line = 0; line < 5; ++line) {
        QWidget* help = Find(FirstBoundariesHelp + line);
        help->setMinimumHeight(help->heightForWidth(typed->minimumWidth()));
        all->addWidget(help, 4 + line, 0, 1, 2);
    }
    all->setRowStretch(2, 1);
    LeaveToLayout(all);
    connect(typed, &QPlainTextEdit::textChanged, this, &BoundariesView::ShowRanges);
    typed->setFocus();
    ShowRanges();
}

QString BoundariesView::Ranges() const {
    return Preview->text();
}

void BoundariesView::ShowRanges() {
    const auto* typed = static_cast<const QPlainTextEdit*>(Find(BoundariesEdit));
    Preview->setText(QString::fromStdString(BoundaryPreview(typed->toPlainText().toStdString())));
}

}  // namespace quillara
