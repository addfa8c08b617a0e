#pragma once

#include "platform/Handles.h"

// Calls on the host's windows by handle. A null handle is a window that isn't there; every call on it does nothing.

/// The control `id` of a dialog or of one of its pages; null when there is none.
HWND GetDlgItem(HWND dialog, int id);

/// Enables or disables a control.
void EnableWindow(HWND control, bool enable);

/// Replaces the rows of a list box by `texts`, an array closed by null. The texts are copied.
void InitStaticListBox(HWND listBox, const char* const* texts);
