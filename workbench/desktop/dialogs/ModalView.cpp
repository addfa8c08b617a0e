#include "workbench/desktop/dialogs/ModalView.h"

#include <QDialog>
#include <QMessageBox>
#include <QVBoxLayout>
#include <exception>

#include "workbench/desktop/dialogs/DialogView.h"

namespace quillara {

bool WorkInModal(Window& window, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setWindowModality(Qt::ApplicationModal);
    const auto act = [&](const std::function<void(Window&)>& action) {
        try {
            action(window);
        } catch (const std::exception& failure) {
            QMessageBox::warning(&dialog, dialog.windowTitle(), QString::fromUtf8(failure.what()));
        }
        if (window.IsClosed()) {
            dialog.accept();
        }
    };
    auto* view = new DialogView(window, act, &dialog);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(view);
    dialog.setWindowTitle(view->windowTitle());
    dialog.exec();
    view->Detach();
    return window.IsClosed();
}

}  // namespace quillara
