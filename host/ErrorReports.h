#pragma once

#include <string_view>

#include "platform/Automation.h"

class CException;

// How a failing member leaves an error object for its caller. None throws; what can't be left is not left.

/// Leaves an error object of an exception: its text, or the standard message of its status. Gives the status: that of a
/// COleException or COleDispatchException, else E_UNEXPECTED. The exception stays the caller's.
HRESULT DualHandleException(const GUID& interface, const CException* exception) noexcept;

/// Leaves an error object of a text of UTF-8; gives DISP_E_EXCEPTION.
HRESULT DispatchReportError(const GUID& interface, std::string_view text) noexcept;
/// The same of a wide text.
HRESULT DispatchReportError(const GUID& interface, std::u16string_view text) noexcept;
