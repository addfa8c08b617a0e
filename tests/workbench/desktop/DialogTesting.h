#pragma once

#include <QAbstractItemView>
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/window/MainWindow.h"

namespace quillara {

/// A main window without data, in which what a person would do is done; messages are noted instead of shown.
struct ShownDesktop {
    ShownDesktop();

    MainWindow Main{nullptr};
    std::vector<std::string> Said;  // messages
};

/// A main window over the sample survey with variables chosen: region, sex and genre to drill on as categories, age and
/// income as numbers; income, hours and region to review.
struct ShownSurvey : ShownDesktop {
    ShownSurvey();

    /// Clicks a button of the startup dialog and works in the modal window that it opens, then leaves it by Escape if
    /// it is still open.
    void InModal(int button, const std::function<void(DialogView&)>& work);
    [[nodiscard]] DialogView& Dialog() { return *Main.Dialog(); }
    [[nodiscard]] Window& Startup() { return Main.Model().Present()->Startup(); }
};

/// Works in the modal window that an action opens, as soon as it is in front; it is left by then.
void InModalWindow(const std::function<void()>& action, const std::function<void(QWidget&)>& work);
/// Clicks a widget of a control where its caption begins.
void Click(DialogView& view, int id);
/// Clicks a row of a list.
void ClickRow(QAbstractItemView& list, int row, Qt::KeyboardModifiers keys = {});
void DoubleClickRow(QAbstractItemView& list, int row);
/// Writes a picture for people where the environment names a folder, QUILLARA_SCREENSHOTS.
void Picture(QWidget& widget, const QString& name);
/// The state of all controls of a window as a text, a line each; `ids` begins them.
[[nodiscard]] std::string StateOf(Window& window);

}  // namespace quillara
