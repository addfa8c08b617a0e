#pragma once

#include <cstdint>

#include "platform/Automation.h"

// The interfaces of the host's result documents, by identifier. Every document answers, by name through IDispatch, the
// properties "Saved" and "Visible" (boolean) and "Window" (object), and the method "Activate", which brings its window
// to the front.

/// A document of one kind, and the interface on which it fires its events.
struct DocumentKind {
    GUID Document;
    GUID Events;
    DISPID Closing = 0;  ///< event without an argument: the document goes away
    DISPID ClosingWithChoice = 0;  ///< event with an integer by reference: the document goes away when it is 1
};

inline constexpr DocumentKind SpreadsheetKind{GuidOf("{C9E2A006-3D45-11D4-9FF4-00C04FA0D540}"),
                                              GuidOf("{C9E2A007-3D45-11D4-9FF4-00C04FA0D540}"), 12, 13};
inline constexpr DocumentKind GraphKind{GuidOf("{C9E2B000-3D45-11D4-9FF4-00C04FA0D540}"),
                                        GuidOf("{C9E2B0D8-3D45-11D4-9FF4-00C04FA0D540}"), 10, 11};

/// State of a document's window.
enum class WindowState : std::int32_t { Minimized = 1, Normal = 2 };

/// The window of a document. By name: State.
struct IOutputWindow : IDispatch {
    static constexpr GUID Id = GuidOf("{C9E2A01B-3D45-11D4-9FF4-00C04FA0D540}");

    virtual HRESULT GetState(WindowState* state) = 0;
    virtual HRESULT PutState(WindowState state) = 0;

  protected:
    ~IOutputWindow() = default;
};
