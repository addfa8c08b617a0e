#pragma once

#include <QColor>
#include <cstdint>
#include <optional>

#include "workbench/windows/Control.h"

class QLineEdit;
class QWidget;

namespace quillara {

/// Shows the state of a control in its widget (ControlWidgets.h). What is the same already is left alone, so that
/// nothing flickers, scrolls or loses what is being typed; no signal tells of it.
void ShowControl(const Control& control, QWidget& widget);

/// A colour of a control, given in blue-green-red order, as it can be read on a background: what is too close to it in
/// brightness becomes lighter or darker, and keeps its hue.
[[nodiscard]] QColor ReadableColour(std::uint32_t colour, const QColor& background);
/// How far the brightness of two colours is apart, from 1, not at all, to 21.
[[nodiscard]] double ContrastOf(const QColor& one, const QColor& other);

/// What a field of numbers holds, in its notation or in any other in which it can be one number only.
[[nodiscard]] std::optional<double> NumberTyped(const QLineEdit& field);

}  // namespace quillara
