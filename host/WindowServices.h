#pragma once

#include <cstdint>
#include <string>

#include "platform/Handles.h"

// Calls on the host's windows by handle. A null handle is a window that isn't there; every call on it does nothing.

/// The control `id` of a dialog or of one of its pages; null when there is none.
HWND GetDlgItem(HWND dialog, int id);

/// The id of a control; 0 for a handle that is none.
int GetDlgCtrlID(HWND control);

/// Enables or disables a control.
void EnableWindow(HWND control, bool enable);

/// Runs a message in a window now, or in the window that has the control, and gives its result.
std::int64_t SendWindowMessage(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam);

/// Has a message run once the one that runs now, and those posted before, are done.
void PostWindowMessage(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam);

// List boxes. Rows count from 0. Changes by these calls are not reported to the dialog.

/// Replaces the rows of a list box by `texts`, an array closed by null; no row is selected then. The texts are copied.
void InitStaticListBox(HWND listBox, const char* const* texts);

/// The selected row; -1 when there is none.
int GetListSelection(HWND listBox);

/// Selects a row; one that isn't there takes the selection away.
void SetListSelection(HWND listBox, int row);

/// The text of a row; "" when it isn't there.
std::string GetListText(HWND listBox, int row);

/// Inserts a row before another or, with the number of rows, at the end. The selection stays on its row number.
void InsertListText(HWND listBox, int row, const std::string& text);

/// Deletes a row, and its selection with it.
void DeleteListRow(HWND listBox, int row);
