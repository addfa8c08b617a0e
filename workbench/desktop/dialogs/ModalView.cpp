#include "workbench/desktop/dialogs/ModalView.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QVBoxLayout>
#include <exception>

#include "platform/WindowMessages.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/dialogs/HostDialogViews.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/ViewArea.h"

namespace quillara {
namespace {

QString PlaceOf(const Window& window) {
    return QStringLiteral("dialogs/%1").arg(window.Resource().Id);
}

/// A window of the exploration as a dialog, open as long as the window is.
class ModalDialog : public QDialog {
  public:
    ModalDialog(Window& window, QWidget* parent) : QDialog(parent), Shown(window) {
        setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(this);
        View = MakeDialogView(
            window, [this](const auto& action) { Act(action); }, this);
        layout->setContentsMargins(0, 0, 0, 0);  // views have margins of their own
        if (View->layout() == nullptr) {
            layout->addWidget(new ViewArea(View, this));
            FocusList();
        } else {
            layout->addWidget(View);
        }
        setWindowTitle(View->windowTitle().trimmed());
        adjustSize();
    }
    ~ModalDialog() override { View->Detach(); }

    /// Escape and the cross.
    void reject() override {
        const Control* cancel = Shown.Find(CancelCommand);
        if (cancel != nullptr && cancel->Enabled && !Shown.IsClosed()) {
            Act([](Window& window) { window.Click(CancelCommand); });
        }
        Shown.IsClosed() ? accept() : QDialog::reject();
    }

  private:
    /// Arrow keys choose at once; Return takes what is chosen.
    void FocusList() {
        for (const auto& [control, widget] : View->All()) {
            if (control->Kind == ControlKind::ListBox || control->Kind == ControlKind::ReportList) {
                return widget->setFocus();
            }
        }
    }
    void Act(const std::function<void(Window&)>& action) {
        try {
            action(Shown);
        } catch (const std::exception& failure) {
            QMessageBox::warning(this, windowTitle(), QString::fromUtf8(failure.what()));
        }
        if (Shown.IsClosed()) {
            accept();
        }
    }

    Window& Shown;
    DialogView* View;
};

}  // namespace

QWidget* FrontWindow(QWidget* usual) {
    QWidget* front = QApplication::activeModalWidget();
    return front != nullptr ? front : usual;
}

bool WorkInModal(Window& window, QWidget* parent) {
    if (window.IsClosed()) {
        return true;
    }
    ModalDialog dialog(window, FrontWindow(parent));
    dialog.restoreGeometry(Preferences::Shared().Value(PlaceOf(window)).toByteArray());  // the usual one without
    dialog.exec();
    Preferences::Shared().Remember(PlaceOf(window), dialog.saveGeometry());
    return window.IsClosed();
}

}  // namespace quillara
