// The program quillara-desktop.

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <cstdio>
#include <string>

#include "workbench/desktop/window/Appearance.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Preferences.h"

namespace {

constexpr const char* NoScreen =
    "quillara-desktop: There is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set. quillara drill, info, convert "
    "and "
    "run work without one.\n";

bool HasScreen() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

}  // namespace

int main(int argc, char** argv) {
    if (!HasScreen()) {
        static_cast<void>(std::fputs(NoScreen, stderr));
        return 1;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quillara-desktop"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillara"));
    QApplication::setApplicationVersion(QStringLiteral(QUILLARA_VERSION));
    const std::string settingsPath = quillara::SettingsStore::UserPath();
    const QString folder = settingsPath.empty() ? QString() : QFileInfo(QString::fromStdString(settingsPath)).path();
    if (!folder.isEmpty()) {
        quillara::Preferences::Shared().Open(QDir(folder).filePath(QStringLiteral("desktop.ini")));
    }
    const quillara::Appearance appearance;
    quillara::SettingsStore settings(settingsPath);
    quillara::MainWindow window(&settings);
    window.Welcome(folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("sessions")));
    window.show();
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 1) {
        window.Open(arguments[1]);
    }
    return QApplication::exec();
}
