#pragma once

#include <optional>
#include <string>

#include "platform/OwnedVariant.h"

class CAnalysisDialog;

namespace quillara {

struct Control;

// What the controls of an open window say to scripts and recorders.

/// The value of a control, of the type that it has: the check of a box or a radio button as 0 or 1, the number of a
/// field, the variables chosen by a variables button, else the text. Empty: a field without a number.
[[nodiscard]] OwnedVariant ValueOf(const CAnalysisDialog& dialog, const Control& control);
/// The text of a control: a caption, what stands in a field, the selected row of a list, or the variables chosen.
[[nodiscard]] std::string TextOf(const CAnalysisDialog& dialog, const Control& control);
/// A number in the shortest decimal notation that reads back as itself.
[[nodiscard]] std::string NumberText(double number);
/// What a recorder gets of a control of the control table; nothing when it isn't there or has no value.
[[nodiscard]] std::optional<std::string> RecordedValueOf(const CAnalysisDialog& dialog, int id);

}  // namespace quillara
