#pragma once

// Opaque handles and interfaces that cross the border between the module and its host.

/// A window of the host or one of its controls; null where there is none. Owned by the host.
struct WindowHandleTag;
using HWND = WindowHandleTag*;

/// An object of the host as automation sees it, a result document above all.
struct IDispatch;
