#pragma once

#include <QString>
#include <string>

class QWidget;

namespace quillara {

// What a walk sees of what it could use.

/// Whether a text stands on what leads to files, printers and other programs.
[[nodiscard]] bool IsForbidden(const QString& text);
/// Whether a window chooses files or printers.
[[nodiscard]] bool IsOfFiles(const QWidget& window);
[[nodiscard]] bool IsLeftAlone(const QWidget& widget);
[[nodiscard]] bool TakesText(const QWidget& widget);
/// For people: "QPushButton control9060 "&Frequency tables"".
[[nodiscard]] std::string NameOf(const QWidget& widget);

}  // namespace quillara
