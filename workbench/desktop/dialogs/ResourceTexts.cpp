#include "workbench/desktop/dialogs/ResourceTexts.h"

#include <QCoreApplication>

namespace quillara {

QString ResourceText(const char* text) {
    return QCoreApplication::translate("quillara::ResourceTexts", text);
}

ControlCaption ResourceCaption(const std::string& caption) {
    ControlCaption shown = CaptionOf(caption);
    shown.Text = ResourceText(shown.Text.c_str()).toStdString();
    return shown;
}

}  // namespace quillara
