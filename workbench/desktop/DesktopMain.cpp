// The program quillara-desktop.

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QTimer>
#include <cstdio>
#include <string>

#include "workbench/desktop/window/Appearance.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/ScreenFit.h"

namespace {

constexpr const char* NoScreen =
    "quillara-desktop: There is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set. quillara drill, info, convert "
    "and "
    "run work without one.\n";

constexpr const char* OnlyFirstWindow = "--first-window";

/// Says when a window has been painted for the first time, and ends the program: for measurements of its start.
class FirstPaint : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, watched, [] {
                static_cast<void>(std::puts("shown"));
                static_cast<void>(std::fflush(stdout));
                QApplication::quit();
            });
        }
        return false;
    }
};

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
    quillara::ScreenFitter fitter;
    application.installEventFilter(&fitter);
    quillara::SettingsStore settings(settingsPath);
    quillara::MainWindow window(&settings);
    window.Welcome(folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("sessions")));
    FirstPaint first;
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 1 && arguments[1] == QLatin1String(OnlyFirstWindow)) {
        window.installEventFilter(&first);
        window.show();
        return QApplication::exec();
    }
    window.show();
    if (arguments.size() > 1) {
        window.Open(arguments[1]);
    }
    return QApplication::exec();
}
