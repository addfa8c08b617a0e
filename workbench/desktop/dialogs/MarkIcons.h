#pragma once

#include <QIcon>
#include <string_view>

namespace quillara {

/// The icon that the mark of a caption stands for ("!372", "h", "`"; ControlCaption.h), in the colours of the palette
/// in force when it is painted; a null icon for a mark without one.
[[nodiscard]] QIcon MarkIcon(std::string_view mark);

}  // namespace quillara
