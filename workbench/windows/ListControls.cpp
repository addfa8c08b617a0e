// Report lists, and list boxes whose rows can be dragged.

#include "host/ListControls.h"

#include <algorithm>

#include "platform/WindowMessages.h"
#include "workbench/windows/Window.h"

using quillara::Control;
using quillara::ReportRow;

namespace {

ReportRow* RowOf(Control* list, int row) {
    const bool known = list != nullptr && row >= 0 && static_cast<std::size_t>(row) < list->ReportRows.size();
    return known ? &list->ReportRows[static_cast<std::size_t>(row)] : nullptr;
}

Control* ListOf(HWND handle) {
    return dynamic_cast<Control*>(handle);
}

/// Moves the selection to another row and reports it.
void MoveSelection(Control& list, int row) {
    if (list.Selected == row) {
        return;
    }
    list.Selected = row;
    const ListNotification notification{&list, list.Id, ListEvent::ItemChanged, row};
    list.Owner->Send(WindowMessage::Notify, static_cast<std::uint64_t>(list.Id),
                     reinterpret_cast<std::int64_t>(&notification));
}

}  // namespace

void CListCtrl::InsertColumn(int column, const char* heading, int width) {
    Control* list = ListOf(Handle);
    if (list != nullptr && column >= 0 && static_cast<std::size_t>(column) <= list->Columns.size()) {
        list->Columns.insert(list->Columns.begin() + column, {heading, width});
    }
}

void CListCtrl::InsertItem(int row, const char* text, bool selected) {
    Control* list = ListOf(Handle);
    if (list == nullptr || row < 0 || static_cast<std::size_t>(row) > list->ReportRows.size()) {
        return;
    }
    list->ReportRows.insert(list->ReportRows.begin() + row, ReportRow{{text}, std::nullopt});
    if (list->Selected >= row) {
        ++list->Selected;
    }
    if (selected) {
        MoveSelection(*list, row);
    }
}

void CListCtrl::SetItemText(int row, int column, const char* text) {
    ReportRow* item = RowOf(ListOf(Handle), row);
    if (item == nullptr || column < 0) {
        return;
    }
    const auto place = static_cast<std::size_t>(column);
    item->Cells.resize(std::max(item->Cells.size(), place + 1));
    item->Cells[place] = text;
}

void CListCtrl::SetItemRange(int row, const RowRange& range) {
    if (ReportRow* item = RowOf(ListOf(Handle), row)) {
        item->Range = range;
    }
}

void CListCtrl::SelectItem(int row) {
    Control* list = ListOf(Handle);
    if (RowOf(list, row) != nullptr) {
        MoveSelection(*list, row);
    }
}

void CListCtrl::SetExtendedStyle(std::uint32_t style) {
    if (Control* list = ListOf(Handle)) {
        list->ExtendedStyle = style;
    }
}

void CListCtrl::SetTextColor(std::uint32_t colour) {
    if (Control* list = ListOf(Handle)) {
        list->Colour = colour;
    }
}

void CReorderListBox::Attach(HWND listBox) {
    if (Control* list = ListOf(listBox)) {
        list->Reordering = this;
    }
}
