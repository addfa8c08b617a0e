#pragma once

// Opaque handles and interfaces that cross the border between the module and its host.

/// A window of the host or one of its controls; null where there is none. Owned by the host.
struct WindowHandleTag;
using HWND = WindowHandleTag*;

/// A document of the host as automation sees it. Only passed on by this layer.
struct IDispatch;
