// The program quillara-desktop.

#include <QApplication>
#include <QStringList>

#include "workbench/desktop/window/MainWindow.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quillara-desktop"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillara"));
    quillara::SettingsStore settings(quillara::SettingsStore::UserPath());
    quillara::MainWindow window(&settings);
    window.show();
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 1) {
        window.Open(arguments[1]);
    }
    return QApplication::exec();
}
