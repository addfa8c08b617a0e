#include "workbench/desktop/results/TableResultView.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <numeric>
#include <set>

#include "workbench/desktop/results/CountBarDelegate.h"
#include "workbench/desktop/results/Printing.h"
#include "workbench/desktop/results/ResultTableModel.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/exploration/TableClip.h"

namespace quillara {
namespace {

constexpr int Rim = 8;
constexpr int LeastLetters = 11;  // of a column
constexpr QSize LargestHint(640, 420);

QString Joined(const std::vector<std::string>& lines) {
    QStringList texts;
    for (const std::string& line : lines) {
        texts.append(QString::fromStdString(line));
    }
    return texts.join(QStringLiteral("; "));
}

/// A long name may be broken behind its underscores.
QString Breakable(const QString& text) {
    return QString(text).replace(u'_', QStringLiteral("_\u200B"));
}

QLabel* TextLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setContextMenuPolicy(Qt::NoContextMenu);
    return label;
}

/// Which rows and columns have a selected cell; all where none is selected.
TablePart SelectedPart(const QItemSelectionModel& selection, const ShownTable& words) {
    std::set<std::size_t> rows;
    std::set<std::size_t> columns;
    for (const QModelIndex& cell : selection.selectedIndexes()) {
        rows.insert(static_cast<std::size_t>(cell.row()));
        columns.insert(static_cast<std::size_t>(cell.column()));
    }
    if (rows.empty() || (rows.size() == words.Rows.size() && columns.size() == words.Columns.size())) {
        return AllOf(words);
    }
    return {{rows.begin(), rows.end()}, {columns.begin(), columns.end()}};
}

/// The rows whose texts in a column are the longest, so many at most.
std::vector<int> LongestRows(const ShownTable& words, std::size_t column, std::size_t count) {
    std::vector<int> rows(words.Rows.size());
    std::iota(rows.begin(), rows.end(), 0);
    const auto last = rows.begin() + static_cast<std::ptrdiff_t>(std::min(count, rows.size()));
    std::ranges::partial_sort(rows, last, std::ranges::greater(), [&](int row) {
        return words.Rows[static_cast<std::size_t>(row)].Cells[column].Text.size();
    });
    rows.erase(last, rows.end());
    return rows;
}

}  // namespace

TableResultView::TableResultView(ResultDocument& document, ExplorationModel& model, QWidget* parent)
    : DocumentView(document, model, parent),
      Rows(new ResultTableModel(document, this)),
      Painter(new CountBarDelegate(this)),
      Title(TextLabel(this)),
      Captions(TextLabel(this)),
      Corner(nullptr),
      Table(new QTableView(this)),
      BarsSwitch(AddAction(tr("Count &bars"), {}, [this] { SetOptions({.HasCountBars = BarsSwitch->isChecked()}); })) {
    AddAction(tr("Select &all"), {}, [this] { Table->selectAll(); });
    BarsSwitch->setCheckable(true);
    BarsSwitch->setChecked(true);
    QFont heading = Title->font();
    heading.setBold(true);
    Title->setFont(heading);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rim, Rim, Rim, Rim);
    layout->setSpacing(Rim / 2);
    layout->addWidget(Title);
    layout->addWidget(Captions);
    layout->addWidget(Table, 1);
    SetUpTable();
    ShowTitle();
    setFocusProxy(Table);
}

void TableResultView::SetUpTable() {
    Table->setModel(Rows);
    Table->setItemDelegate(Painter);
    Table->setShowGrid(false);
    Table->setAlternatingRowColors(true);
    Table->setFrameShape(QFrame::NoFrame);
    Table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    Table->setAccessibleName(tr("Result table"));
    Table->setTabKeyNavigation(false);
    Table->setStyleSheet(
        QStringLiteral("QHeaderView, QTableCornerButton::section { background: palette(base); border: none; }"));
    Table->horizontalHeader()->setHighlightSections(false);
    Table->verticalHeader()->setHighlightSections(false);
    Table->verticalHeader()->setTextElideMode(Qt::ElideMiddle);
    Table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    Table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + Rim);
    Table->resizeColumnsToContents();
    for (int column = 0; column < Rows->columnCount(); ++column) {
        Table->setColumnWidth(column,
                              std::max(Table->columnWidth(column), fontMetrics().averageCharWidth() * LeastLetters));
    }
    if (auto* button = Table->findChild<QAbstractButton*>()) {
        button->setAccessibleName(tr("Select all"));
        auto* layout = new QVBoxLayout(button);
        layout->setContentsMargins(Rim / 2, 0, Rim / 2, 0);
        Corner = new QLabel(button);
        Corner->setAttribute(Qt::WA_TransparentForMouseEvents);
        layout->addWidget(Corner);
    }
}

/// The analysis counts cases in a way of its own in the caption; people read what the steps leave.
std::vector<std::string> TableResultView::CaptionLines() const {
    Exploration* exploration = Model().Present();
    const bool isOfAnalysis = Shown().Origin().Command != 0 && exploration != nullptr;
    return isOfAnalysis ? SubsetLinesOf(*exploration, Shown()) : Rows->Words().CaptionLines;
}

void TableResultView::ShowTitle() {
    const ShownTable& words = Rows->Words();
    Title->setText(Breakable(QString::fromStdString(words.Title)));
    const std::vector<std::string> captions = CaptionLines();
    Captions->setText(Joined(captions));
    Captions->setVisible(!captions.empty());
    if (Corner != nullptr) {
        Corner->setText(QString::fromStdString(words.Corner));
    }
    setAccessibleName(QString::fromStdString(words.Title));
}

/// That of its heading or its widest text, which is among the longest; to lay out each of hundreds of rows takes longer
/// than to paint the window.
int TableResultView::WidthOf(int column) const {
    constexpr std::size_t measured = 40;
    QStyleOptionViewItem option;
    option.initFrom(Table);
    option.widget = Table;
    int width = Table->horizontalHeader()->sectionSizeHint(column);
    for (const int row : LongestRows(Rows->Words(), static_cast<std::size_t>(column), measured)) {
        width = std::max(width, Painter->sizeHint(option, Rows->index(row, column)).width());
    }
    return width;
}

/// The user's widths stay, but no number is cut.
void TableResultView::WidenColumns() {
    for (int column = 0; column < Rows->columnCount(); ++column) {
        if (const int width = WidthOf(column); width > Table->columnWidth(column)) {
            Table->setColumnWidth(column, width);
        }
    }
}

/// Long names of rows leave room for what is said of them.
void TableResultView::resizeEvent(QResizeEvent* event) {
    DocumentView::resizeEvent(event);
    Table->verticalHeader()->setMaximumWidth(
        std::max(width() * 11 / 20, fontMetrics().averageCharWidth() * LeastLetters));
}

void TableResultView::Refresh() {
    Rows->Show(Shown());
    ShowTitle();
    WidenColumns();
}

void TableResultView::SetOptions(const ViewOptions& options) {
    Painter->SetBars(options.HasCountBars);
    BarsSwitch->setChecked(options.HasCountBars);
    Table->viewport()->update();
}

void TableResultView::Copy() {
    ShownTable words = Rows->Words();
    words.CaptionLines = CaptionLines();
    const TableClip clip = ClipOf(words, SelectedPart(*Table->selectionModel(), words));
    auto* data = new QMimeData;
    data->setText(QString::fromStdString(clip.Tabs));
    data->setHtml(QString::fromStdString(clip.Html));
    QGuiApplication::clipboard()->setMimeData(data);
}

QString TableResultView::FileKinds() const {
    return tr("Comma separated values (*.csv);;Workbook (*.xlsx);;Web page (*.html);;Text (*.txt)");
}

void TableResultView::Print(QPrinter& printer) {
    PrintDocuments(printer, OutputsForPeople(Model().Present(), {CountedPointer<ResultDocument>::Share(&Shown())}));
}

QSize TableResultView::sizeHint() const {
    const QHeaderView& across = *Table->horizontalHeader();
    const QHeaderView& down = *Table->verticalHeader();
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = down.sizeHint().width() + across.length() + scrollBar + 2 * Rim;
    const int labels = Title->sizeHint().height() + (Captions->isHidden() ? 0 : Captions->sizeHint().height());
    const int height = labels + across.sizeHint().height() + down.length() + scrollBar + 3 * Rim;
    return QSize(std::max(width, 260), std::max(height, 140)).boundedTo(LargestHint);
}

DocumentPlace TableResultView::PlaceAt(QPoint point) const {
    const QPoint inCells = Table->viewport()->mapFrom(this, point);
    const bool isBeside = Table->geometry().contains(point);
    return {.Row = isBeside && inCells.y() >= 0 ? Table->rowAt(inCells.y()) : -1};
}

DocumentPlace TableResultView::PlaceInFocus(QPoint& point) const {
    const QModelIndex current = Table->currentIndex();
    point = Table->viewport()->mapTo(this, Table->visualRect(current).center());
    return {.Row = current.row()};
}

}  // namespace quillara
