#pragma once

#include <QString>

namespace quillara {

/// What a person is told of a control of a dialog beside its caption.
struct ControlTip {
    QString Name;  ///< what it is called where its caption doesn't say; empty: its caption
    QString Tip;
};

/// Empty for a control that needs none. `dialog` is the id of its dialog's resource.
[[nodiscard]] ControlTip TipOf(int dialog, int control);

}  // namespace quillara
