#pragma once

#include <cstdint>

#include "platform/Handles.h"

// The messages by which a host tells a dialog what happens in its window. The numbers are the platform's own.

/// Numbers of the messages that dialogs look at.
namespace WindowMessage {
inline constexpr unsigned Notify = 0x4E;  ///< a list reports an event; lParam is the address of a ListNotification
inline constexpr unsigned InitDialog = 0x110;  ///< the window has been made and isn't shown yet
inline constexpr unsigned Command = 0x111;  ///< 273; a control was used: its id in the low 16 bits of wParam
inline constexpr unsigned ColourOfEdit = 0x133;  ///< the first of the queries for the colour of a control, whose handle
                                                 ///< is lParam
inline constexpr unsigned ColourOfStatic = 0x138;  ///< the last of them
}  // namespace WindowMessage

static_assert(WindowMessage::Command == 273);

/// Events that a report list reports.
namespace ListEvent {
inline constexpr int DoubleClick = -3;
inline constexpr int ItemChanged = -101;
}  // namespace ListEvent

/// What goes with WindowMessage::Notify.
struct ListNotification {
    HWND List = nullptr;
    int Id = 0;  ///< control id of the list
    int Code = 0;  ///< a ListEvent
    int Row = -1;  ///< the row concerned, from 0; -1: none
};

/// Command ids that the framework gives to the buttons that end a dialog.
inline constexpr int OkCommand = 1;
inline constexpr int CancelCommand = 2;

/// The command id of a command message.
[[nodiscard]] constexpr int CommandOf(std::uint64_t wParam) noexcept {
    return static_cast<int>(wParam & 0xFFFF);
}
