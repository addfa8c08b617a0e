#pragma once

#include <cstdint>

#include "platform/Handles.h"

/// The values that a row of a list stands for: an interval, or one value, whose bounds are the same and belong to it.
struct RowRange {
    double Lower = 0.0;
    double Upper = 0.0;
    bool HasLower = false;  ///< Lower itself belongs to it
    bool HasUpper = false;  ///< Upper itself belongs to it
};

/// A report list: rows of text cells under columns, one row selected. The object steers the control that it is attached
/// to; without one every call does nothing. Rows and columns count from 0; the text of a row is its column 0.
/// When the selection comes to rest on another row, the list reports ListEvent::ItemChanged to its dialog.
class CListCtrl {
  public:
    CListCtrl() = default;
    CListCtrl(const CListCtrl&) = delete;
    CListCtrl& operator=(const CListCtrl&) = delete;

    /// Steers this control from now on.
    void Attach(HWND control) { Handle = control; }

    /// Inserts a column; `width` is in pixels.
    void InsertColumn(int column, const char* heading, int width);
    /// Inserts a row; `selected`: it takes the selection.
    void InsertItem(int row, const char* text, bool selected);
    void SetItemText(int row, int column, const char* text);
    /// Says which values a row stands for, so that hosts and scripts can look rows up by value.
    void SetItemRange(int row, const RowRange& range);
    void SelectItem(int row);
    /// Bits: 1 grid lines, 32 the whole row is selected.
    void SetExtendedStyle(std::uint32_t style);
    /// Colour of the texts, in blue-green-red order.
    void SetTextColor(std::uint32_t colour);

  private:
    HWND Handle = nullptr;
};

/// A list box whose rows the user can drag to another place. A derived object is made on the heap, attached to a
/// control, and destroys itself at the end of its window.
class CReorderListBox {
  public:
    /// Analyses give 0 and 1; their meaning is the host's.
    CReorderListBox(int mode, int flags) : Mode(mode), Flags(flags) {}
    CReorderListBox(const CReorderListBox&) = delete;
    CReorderListBox& operator=(const CReorderListBox&) = delete;
    virtual ~CReorderListBox() = default;

    /// The window of the list box has ended; last call on the object.
    virtual void EndOfWindow() {}
    /// The user has dragged the selected row so that it should stand before row `target`, which may be the number of
    /// rows.
    virtual void MoveSelectionTo(int target) = 0;

    /// Joins the object to a list box, which reports to it what the user does.
    void Attach(HWND listBox);

  private:
    int Mode;
    int Flags;
};
