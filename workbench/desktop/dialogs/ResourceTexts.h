#pragma once

#include <QString>
#include <string>

#include "workbench/exploration/ControlCaption.h"

namespace quillara {

/// A title or other plain text of the dialogs' resources, in the language of the desktop.
[[nodiscard]] QString ResourceText(const char* text);
/// A caption of them, whose mark is that of the resource whatever a translation makes of it.
[[nodiscard]] ControlCaption ResourceCaption(const std::string& caption);

}  // namespace quillara
