#pragma once

#include <QString>

#include "platform/DialogResource.h"

class QWidget;

namespace quillara {

/// A widget for a control of a dialog, with caption, icon, tip and names, that does nothing yet; for a tab control an
/// empty one. Number fields are a QSpinBox or a QLineEdit. `dialog` is the id of the dialog.
[[nodiscard]] QWidget* MakeControlWidget(int dialog, const ControlResource& control, QWidget* parent);

/// Whether a static control shows what the module writes into it, rather than the caption of another.
[[nodiscard]] bool ShowsResult(const ControlResource& control);
/// Whether the caption of a check box is meant to stand in several lines.
[[nodiscard]] bool IsWrapped(const ControlResource& control);
/// A caption with the mark of its access key, as toolkits take it.
[[nodiscard]] QString CaptionText(const ControlResource& control);

}  // namespace quillara
