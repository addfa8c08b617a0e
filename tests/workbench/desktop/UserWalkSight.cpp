#include "tests/workbench/desktop/UserWalkSight.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <algorithm>
#include <array>

namespace quillara {
namespace {

/// By a part of the text.
constexpr std::array Forbidden = {"rint", "ave as", "Save",   "Open...", "Open recent", "Run",    "R&un",
                                  "Quit", "ecord",  "onsole", "cript",   "Browse",      "Choose", "Close the data"};

}  // namespace

bool IsForbidden(const QString& text) {
    return std::ranges::any_of(Forbidden, [&](const char* part) {
        return QString(text).remove(u'&').contains(QLatin1String(part)) && !text.contains(QStringLiteral("raw data"));
    });
}

bool IsOfFiles(const QWidget& window) {
    return qobject_cast<const QFileDialog*>(&window) != nullptr || window.inherits("QPrintDialog") ||
           window.inherits("QAbstractPrintDialog") || window.inherits("QPrintPreviewDialog");
}

bool IsLeftAlone(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget); button && IsForbidden(button->text())) {
        return true;
    }
    for (const QWidget* parent = &widget; parent != nullptr; parent = parent->parentWidget()) {
        if (parent->objectName() == QStringLiteral("scriptPanel") ||
            parent->objectName() == QStringLiteral("consolePanel") || parent->inherits("QMenuBar")) {
            return true;
        }
    }
    return false;
}

std::string NameOf(const QWidget& widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return widget.metaObject()->className() + std::string(" ") + widget.objectName().toStdString() +
           (button == nullptr ? "" : " \"" + button->text().toStdString() + "\"");
}

bool TakesText(const QWidget& widget) {
    return widget.inherits("QLineEdit") || widget.inherits("QPlainTextEdit") || widget.inherits("QAbstractSpinBox");
}

}  // namespace quillara
