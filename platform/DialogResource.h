#pragma once

#include <cstdint>
#include <span>

// What the dialogs of a module look like: constant tables that the host makes windows of.

enum class ControlKind : std::uint8_t {
    Button,
    DefaultButton,
    CheckBox,
    RadioButton,
    GroupBox,
    Static,
    ListBox,
    ReportList,
    Edit,
    MultiLineEdit,
    IntegerField,
    RealField,
    HelpText,
    TabControl,
};

/// Place of a control in its dialog or page, in dialog units.
struct DialogRectangle {
    std::int16_t X;
    std::int16_t Y;
    std::int16_t Width;
    std::int16_t Height;
};

/// Id of a control that nobody addresses.
inline constexpr int NoControlId = -1;

struct ControlResource {
    int Id;  ///< NoControlId: none
    ControlKind Kind;
    const char* Caption;  ///< UTF-8; may begin with a mark that selects an icon of the host
    DialogRectangle Place;
};

/// A dialog, or a page of one.
struct DialogResource {
    int Id;
    const char* Title;
    std::int16_t Width;  ///< in dialog units
    std::int16_t Height;
    std::span<const ControlResource> Controls;
};

/// A page of a tab control, by the id of its resource; a row of zeros ends a table of them.
struct TabRow {
    std::int32_t Resource;
    std::int32_t Reserved[4];
};

static_assert(sizeof(TabRow) == 20);
