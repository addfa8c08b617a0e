#include "workbench/desktop/dialogs/VariableListsView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/RowSearch.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace quillara {
namespace {

using Dialog = VariableListsDialog;

struct SideControls {
    int Label;
    int Count;
    int List;
    int Add;
    int Take;
};

// clang-format off
constexpr std::array<SideControls, 2> Sides = {{
    {Dialog::FirstLabel,  Dialog::FirstCount,  Dialog::FirstList,  Dialog::AddToFirst,  Dialog::TakeFromFirst},
    {Dialog::SecondLabel, Dialog::SecondCount, Dialog::SecondList, Dialog::AddToSecond, Dialog::TakeFromSecond},
}};
// clang-format on

constexpr std::array Lists = {int{Dialog::AvailableList}, int{Dialog::FirstList}, int{Dialog::SecondList}};

}  // namespace

VariableListsView::VariableListsView(Window& window, Act act, QWidget* parent)
    : DialogView(window, std::move(act), parent), Sought(new RowSearch(ListOf(Dialog::AvailableList), this)) {
    Arrange();
    for (const int id : Lists) {
        ReportList& list = ListOf(id);
        list.SetDrags();
        list.installEventFilter(this);
        connect(&list, &QTreeWidget::itemSelectionChanged, this, &VariableListsView::Refresh);
        connect(&list, &ReportList::rowsDragged, this,
                [this, id](const QPoint& place, bool areDropped) { Drag(id, place, areDropped); });
        list.FitColumns(ListOf(Dialog::AvailableList));
    }
    connect(Sought, &QLineEdit::textChanged, this, &VariableListsView::Refresh);
    connect(Sought, &RowSearch::rowTaken, this, [this](int row) { Add(LastSide, {row}); });
    Refresh();
    Sought->setFocus();
}

ReportList& VariableListsView::ListOf(int id) const {
    return *static_cast<ReportList*>(Find(id));
}

QBoxLayout* VariableListsView::Arranged(std::size_t side) {
    const SideControls& controls = Sides[side];
    auto* buttons = new QVBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Find(controls.Add));
    buttons->addWidget(Find(controls.Take));
    buttons->addStretch();
    auto* heading = new QHBoxLayout;
    heading->addWidget(Find(controls.Label), 1);
    heading->addWidget(Find(controls.Count));
    auto* chosen = new QVBoxLayout;
    chosen->addLayout(heading);
    chosen->addWidget(Find(controls.List));
    auto* row = new QHBoxLayout;
    row->addLayout(buttons);
    row->addLayout(chosen, 1);
    return row;
}

void VariableListsView::Arrange() {
    auto* offered = new QVBoxLayout;
    auto* label = static_cast<QLabel*>(Find(NoControlId));
    offered->addWidget(label);
    offered->addWidget(Sought);
    offered->addWidget(Find(Dialog::AvailableList));
    auto* chosen = new QVBoxLayout;
    auto* lists = new QHBoxLayout;
    for (std::size_t side = 0; side < Sides.size(); ++side) {
        chosen->addLayout(Arranged(side));
        Find(Sides[side].List)->setAccessibleName(static_cast<QLabel*>(Find(Sides[side].Label))->text());
    }
    lists->addLayout(offered, 1);
    lists->addLayout(chosen, 1);
    auto* ends = new QHBoxLayout;
    ends->addStretch();
    ends->addWidget(Find(OkCommand));
    ends->addWidget(Find(CancelCommand));
    auto* all = new QVBoxLayout;
    all->addLayout(lists, 1);
    all->addLayout(ends);
    LeaveToLayout(all);
    for (const int id : Lists) {
        ListOf(id).SetUsualRoom(58, id == Dialog::AvailableList ? 16 : 7);
    }
    setTabOrder(Sought, Find(Dialog::AvailableList));
}

void VariableListsView::Refresh() {
    DialogView::Refresh();
    if (TheWindow() == nullptr || Sought == nullptr) {
        return;
    }
    Sought->Apply(TheWindow()->At(Dialog::AvailableList).ReportRows);
    for (const SideControls& side : Sides) {  // of several rows one can be added at least, or it does no harm
        if (ListOf(Dialog::AvailableList).SelectedRows().size() > 1) {
            Find(side.Add)->setEnabled(true);
        }
        if (!ListOf(side.List).SelectedRows().empty()) {
            Find(side.Take)->setEnabled(true);
        }
    }
}

void VariableListsView::Click(int id) {
    for (std::size_t side = 0; side < Sides.size(); ++side) {
        if (id == Sides[side].Add) {
            Add(side, ListOf(Dialog::AvailableList).SelectedRows());
            return ListOf(Dialog::AvailableList)
                .setFocus();  // the button is disabled now: the next key is for the list
        }
        if (id == Sides[side].Take) {
            Take(side);
            return ListOf(Sides[side].List).setFocus();
        }
    }
    DialogView::Click(id);
}

void VariableListsView::DoubleClickRow(int id, int row) {
    if (id == Dialog::AvailableList) {
        Add(LastSide, {row});
    } else {
        Take(id == Dialog::FirstList ? 0 : 1);
    }
}

void VariableListsView::Add(std::size_t side, const std::vector<int>& rows) {
    LastSide = side;
    Do([&](Window& window) {
        for (const int row : rows) {
            window.ClickRow(Dialog::AvailableList, row);
            if (window.At(Sides[side].Add).Enabled) {
                window.Click(Sides[side].Add);
            }
        }
    });
}

void VariableListsView::Take(std::size_t side) {
    std::vector<int> rows = ListOf(Sides[side].List).SelectedRows();
    std::ranges::reverse(rows);
    Do([&](Window& window) {
        for (const int row : rows) {
            window.ClickRow(Sides[side].List, row);
            window.Click(Sides[side].Take);
        }
    });
}

void VariableListsView::Drag(int from, const QPoint& place, bool areDropped) {
    int target = 0;
    for (const int id : Lists) {
        ReportList& list = ListOf(id);
        const bool isOver = id != from && list.rect().contains(list.mapFromGlobal(place));
        list.SetDropTarget(isOver && !areDropped);
        target = isOver ? id : target;
    }
    if (areDropped && target != 0) {
        Move(from, target);
    }
}

void VariableListsView::Move(int from, int target) {
    if (target != Dialog::AvailableList) {
        const std::size_t side = target == Dialog::FirstList ? 0 : 1;
        Add(side, from == Dialog::AvailableList ? ListOf(from).SelectedRows() : RowsOfSame(from));
    }
    if (from != Dialog::AvailableList) {
        Take(from == Dialog::FirstList ? 0 : 1);
    }
}

/// Where the variables that are selected in a list stand among those to choose from.
std::vector<int> VariableListsView::RowsOfSame(int list) const {
    const auto& offered = TheWindow()->At(Dialog::AvailableList).ReportRows;
    std::vector<int> rows;
    for (const int row : ListOf(list).SelectedRows()) {
        const int number = NumberOf(TheWindow()->At(list).ReportRows[static_cast<std::size_t>(row)]);
        const auto same = std::ranges::find(offered, number, NumberOf);
        rows.push_back(static_cast<int>(same - offered.begin()));
    }
    return rows;
}

bool VariableListsView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Insert && watched == Find(Dialog::AvailableList)) {
            Click(Sides[LastSide].Add);
            return true;
        }
        for (std::size_t side = 0; side < Sides.size(); ++side) {
            if (key == Qt::Key_Delete && watched == Find(Sides[side].List)) {
                Take(side);
                return true;
            }
        }
    }
    return DialogView::eventFilter(watched, event);
}

}  // namespace quillara
