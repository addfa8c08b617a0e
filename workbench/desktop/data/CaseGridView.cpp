#include "workbench/desktop/data/CaseGridView.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <set>
#include <vector>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/hosting/RemainingCases.h"

namespace quillara {
namespace {

constexpr std::size_t MostCopied = 1'000'000;  // fields
constexpr int WidestInCharacters = 48;

QToolButton* MakeFindButton(const QString& name, const QString& tip, Qt::ArrowType arrow, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

QTableView* MakeGrid(CaseGridModel& model, QWidget* parent) {
    auto* grid = new QTableView(parent);
    grid->setObjectName(QStringLiteral("casesGrid"));
    grid->setAccessibleName(CaseGridView::tr("Cases"));
    grid->horizontalHeader()->setSortIndicatorClearable(true);
    grid->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    grid->horizontalHeader()->setResizeContentsPrecision(40);
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 6);
    grid->setModel(&model);
    grid->setSortingEnabled(true);
    grid->setWordWrap(false);
    grid->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    return grid;
}

}  // namespace

CaseGridView::CaseGridView(QWidget* parent)
    : QWidget(parent),
      Cases(new CaseGridModel(this)),
      Fields(MakeGrid(*Cases, this)),
      Search(new BackgroundWork(this)) {
    setObjectName(QStringLiteral("casesView"));
    setFocusProxy(Fields);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(MakeBar());
    layout->addWidget(Fields);
    auto* copy = new QAction(tr("&Copy"), this);
    copy->setObjectName(QStringLiteral("copyFields"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, &CaseGridView::Copy);
    Fields->addAction(copy);
    Fields->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (BackgroundWork* work : {&Cases->Arranging(), Search}) {
        connect(work, &BackgroundWork::began, this, &CaseGridView::ShowArranging);
        connect(work, &BackgroundWork::ended, this, &CaseGridView::ShowArranging);
    }
    connect(Cases, &QAbstractItemModel::modelReset, this, &CaseGridView::ShowCount);
    connect(Cases, &QAbstractItemModel::layoutChanged, this, &CaseGridView::ShowCount);
    ShowCount();
}

QWidget* CaseGridView::MakeBar() {
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(6, 4, 6, 4);
    Labels = new QCheckBox(tr("Value &labels"), bar);
    Labels->setObjectName(QStringLiteral("showLabels"));
    Labels->setToolTip(tr("Show labels in place of codes"));
    Labels->setChecked(true);
    connect(Labels, &QCheckBox::toggled, this,
            [this](bool isOn) { Cases->SetWriting(isOn ? ValueWriting::Labels : ValueWriting::Codes); });
    Filter = new QCheckBox(tr("Only the cases that &remain"), bar);
    Filter->setObjectName(QStringLiteral("showRemaining"));
    Filter->setToolTip(tr("Hide the cases that the steps and the case selection leave out"));
    connect(Filter, &QCheckBox::toggled, this, [this](bool isOn) { Cases->SetFiltered(isOn); });
    Count = new QLabel(bar);
    Count->setObjectName(QStringLiteral("casesCount"));
    Stop = new QPushButton(tr("&Stop"), bar);
    Stop->setObjectName(QStringLiteral("stopArranging"));
    Stop->setToolTip(tr("Leave the cases in the order in which they are"));
    Stop->hide();
    connect(Stop, &QPushButton::clicked, this, [this] {
        Cases->Arranging().Cancel();
        Search->Cancel();
    });
    row->addWidget(Labels);
    row->addWidget(Filter);
    row->addStretch();
    row->addWidget(Count);
    row->addWidget(Stop);
    AddSearch(*bar);
    return bar;
}

void CaseGridView::AddSearch(QWidget& bar) {
    Sought = new QLineEdit(&bar);
    Sought->setObjectName(QStringLiteral("findText"));
    Sought->setPlaceholderText(tr("Find a value"));
    Sought->setAccessibleName(tr("Find a value"));
    Sought->setToolTip(tr("A part of what a field shows; Enter finds the next one"));
    Sought->setClearButtonEnabled(true);
    Sought->setMaximumWidth(Sought->fontMetrics().averageCharWidth() * 30);
    connect(Sought, &QLineEdit::returnPressed, this, [this] { Find(false); });
    auto* before = MakeFindButton(QStringLiteral("findBefore"), tr("Find the one before"), Qt::UpArrow, &bar);
    auto* next = MakeFindButton(QStringLiteral("findNext"), tr("Find the next one"), Qt::DownArrow, &bar);
    connect(before, &QToolButton::clicked, this, [this] { Find(true); });
    connect(next, &QToolButton::clicked, this, [this] { Find(false); });
    auto* find = new QAction(tr("&Find"), this);
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, Sought, [this] { Sought->setFocus(); });
    addAction(find);
    for (QWidget* part : std::initializer_list<QWidget*>{Sought, before, next}) {
        bar.layout()->addWidget(part);
    }
}

void CaseGridView::Follow(ExplorationModel& model) {
    Explored = &model;
    Filter->setVisible(true);
    connect(&model, &ExplorationModel::replaced, this, &CaseGridView::Refresh);
    connect(&model, &ExplorationModel::changed, this, [this] {
        if (isVisible()) {
            Refresh();
        }
    });
    Refresh();
}

void CaseGridView::Show(std::shared_ptr<const DataTable> table) {
    if (table == Cases->Table()) {
        return;
    }
    Search->Cancel();
    Fields->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    Cases->Show(std::move(table));
    Fields->resizeColumnsToContents();
    const int widest = fontMetrics().averageCharWidth() * WidestInCharacters;
    for (int column = 0; column < Cases->columnCount(); ++column) {
        Fields->setColumnWidth(column, std::min(Fields->columnWidth(column), widest));
    }
}

void CaseGridView::Refresh() {
    Exploration* exploration = Explored->Present();
    if (exploration == nullptr || exploration->HasEnded()) {
        Show(nullptr);
        return;
    }
    Show(exploration->SharedTable());
    if (isVisible()) {
        const RowSet* remaining = RemainingCases(exploration->Analysed());
        Cases->MarkRemaining(remaining == nullptr ? std::nullopt : std::optional(*remaining));
        ShowCount();
    }
}

void CaseGridView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Filter->setVisible(Explored != nullptr);
    if (Explored != nullptr && (!Explored->IsBusy() || Explored->IsPicking())) {
        Refresh();
    }
}

/// The header shows the order that there is as soon as no other one is waited for.
void CaseGridView::ShowArranging() {
    Stop->setVisible(Cases->Arranging().IsRunning() || Search->IsRunning());
    if (!Cases->Arranging().IsRunning()) {
        const CaseOrder& order = Cases->PresentOrder();
        const QSignalBlocker unheard(Fields->horizontalHeader());
        Fields->horizontalHeader()->setSortIndicator(order.Variable ? static_cast<int>(*order.Variable) : -1,
                                                     order.IsDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
    ShowCount();
}

void CaseGridView::ShowCount() {
    if (Cases->Arranging().IsRunning()) {
        Count->setText(tr("Sorting..."));
    } else if (Search->IsRunning()) {
        Count->setText(tr("Searching..."));
    } else if (HasFailed) {
        Count->setText(tr("Not found"));
    } else if (Cases->Table() == nullptr) {
        Count->setText(tr("No data"));
    } else {
        const int all = Cases->Table()->Cases;
        const QLocale locale;
        Count->setText(Cases->rowCount() == all
                           ? tr("%1 cases").arg(locale.toString(all))
                           : tr("%1 of %2 cases").arg(locale.toString(Cases->rowCount()), locale.toString(all)));
    }
}

void CaseGridView::Find(bool isBackwards) {
    if (Cases->Table() == nullptr || Sought->text().isEmpty()) {
        return;
    }
    HasFailed = false;
    const QModelIndex from = Fields->currentIndex();
    FieldSearch search{Sought->text().toStdString(), Cases->Writing()};
    search.IsBackwards = isBackwards;
    const bool isAnywhere = from.isValid();
    search.Place = static_cast<std::size_t>(isAnywhere ? from.row() : isBackwards ? 0 : Cases->rowCount() - 1);
    search.Variable = static_cast<std::size_t>(isAnywhere ? from.column() : isBackwards ? 0 : Cases->columnCount() - 1);
    Search->Start([this, search, table = Cases->Table(),
                   places = Cases->SharedArrangement()](const auto& cancelled) -> BackgroundWork::Delivery {
        const std::optional<FoundField> found = FindField(*table, *places, search, cancelled);
        return [this, found, places] {
            if (found && places == Cases->SharedArrangement()) {
                ShowFound(*found);
            }
            HasFailed = !found;
        };
    });
}

void CaseGridView::ShowFound(const FoundField& found) {
    const QModelIndex place = Cases->index(static_cast<int>(found.Place), static_cast<int>(found.Variable));
    Fields->setCurrentIndex(place);
    Fields->scrollTo(place, QAbstractItemView::EnsureVisible);
}

/// The fields of all lines and columns in which any is selected.
void CaseGridView::Copy() {
    std::set<std::size_t> places;
    std::set<std::size_t> variables;
    for (const QItemSelectionRange& range : Fields->selectionModel()->selection()) {
        for (int column = range.left(); column <= range.right(); ++column) {
            variables.insert(static_cast<std::size_t>(column));
        }
        for (int row = range.top(); row <= range.bottom() && places.size() * variables.size() <= MostCopied; ++row) {
            places.insert(static_cast<std::size_t>(row));
        }
    }
    if (places.size() * variables.size() > MostCopied) {
        Explored == nullptr
            ? QApplication::beep()
            : Explored->ShowMessage(
                  tr("More than a million fields are selected; save the cases to a file instead.").toStdString());
        return;
    }
    if (!places.empty()) {
        const std::vector<std::size_t> rows(places.begin(), places.end());
        const std::vector<std::size_t> columns(variables.begin(), variables.end());
        QApplication::clipboard()->setText(QString::fromStdString(
            FieldsAsText(*Cases->Table(), Cases->Arrangement(), rows, columns, Cases->Writing())));
    }
}

}  // namespace quillara
