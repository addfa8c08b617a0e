#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/ListControls.h"
#include "platform/DialogResource.h"
#include "platform/Handles.h"

/// What a handle of a window points to: a window or a control of the model below.
struct WindowHandleTag {
    WindowHandleTag() = default;
    WindowHandleTag(const WindowHandleTag&) = delete;
    WindowHandleTag& operator=(const WindowHandleTag&) = delete;
    virtual ~WindowHandleTag() = default;

    bool Enabled = true;
};

namespace quillara {

class Window;

/// A column of a report list.
struct ReportColumn {
    std::string Heading;
    int Width = 0;  ///< in pixels
};

/// A row of a report list.
struct ReportRow {
    std::vector<std::string> Cells;  ///< up to one per column
    std::optional<RowRange> Range;  ///< the values that it stands for
};

/// Lowest and highest entry of a number field.
struct FieldRange {
    double Lowest;
    double Highest;
};

/// A control of a window: its state, not its look. What of it a control doesn't have stays at its default.
struct Control : WindowHandleTag {
    /// A check box or a radio button.
    [[nodiscard]] bool IsCheck() const { return Kind == ControlKind::CheckBox || Kind == ControlKind::RadioButton; }
    [[nodiscard]] bool IsButton() const { return Kind == ControlKind::Button || Kind == ControlKind::DefaultButton; }
    [[nodiscard]] bool IsEdit() const { return Kind == ControlKind::Edit || Kind == ControlKind::MultiLineEdit; }
    [[nodiscard]] bool IsNumberField() const {
        return Kind == ControlKind::IntegerField || Kind == ControlKind::RealField;
    }
    [[nodiscard]] bool IsList() const { return Kind == ControlKind::ListBox || Kind == ControlKind::ReportList; }

    int Id = NoControlId;
    ControlKind Kind = ControlKind::Static;
    const char* Caption = "";  ///< in the resource
    Window* Owner = nullptr;  ///< the window that gets its messages

    std::string Text;  ///< caption of a button or static, content of an edit
    bool Visible = true;
    bool Checked = false;

    double Number = 0.0;  ///< content of a number field
    bool HasNumber = false;
    std::optional<FieldRange> Range;

    std::vector<std::string> Rows;  ///< of a list box
    std::vector<ReportColumn> Columns;  ///< of a report list
    std::vector<ReportRow> ReportRows;
    int Selected = -1;  ///< the selected row of a list; -1: none
    std::uint32_t ExtendedStyle = 0;
    std::optional<std::uint32_t> Colour;  ///< of its texts, in blue-green-red order; nothing: as usual
    CReorderListBox* Reordering = nullptr;  ///< what hears of dragged rows; nothing: rows can't be dragged
};

}  // namespace quillara
