// The program quillara-desktop.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QTimer>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "workbench/desktop/window/Appearance.h"
#include "workbench/desktop/window/Language.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/ScreenFit.h"

namespace {

constexpr const char* NoScreen =
    "quillara-desktop: There is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set. quillara drill, info, convert "
    "and "
    "run work without one.\n";

constexpr const char* OnlyFirstWindow = "--first-window";

constexpr const char* Help =
    "quillara-desktop [FILE]\n"
    "\n"
    "Opens the window for the drill-down exploration of data tables, with the data file in it that is named.\n"
    "\n"
    "  --help      shows this\n"
    "  --version   shows the version\n"
    "\n"
    "quillara --help tells what can be done without a screen.\n";

/// What is answered without a window; no value: the window is to open.
std::optional<int> Answer(const std::vector<std::string>& arguments) {
    const std::string first = arguments.empty() ? std::string() : arguments.front();
    if (first == "--help" || first == "-h") {
        static_cast<void>(std::fputs(Help, stdout));
        return 0;
    }
    if (first == "--version") {
        static_cast<void>(std::puts("quillara-desktop " QUILLARA_VERSION));
        return 0;
    }
    if (first == OnlyFirstWindow) {
        return std::nullopt;
    }
    if (arguments.size() > 1) {
        static_cast<void>(std::fputs("quillara-desktop: One file is opened at a time; name one.\n", stderr));
        return 2;
    }
    if (first.starts_with('-') && !QFileInfo::exists(QString::fromStdString(first))) {
        const std::string complaint = "quillara-desktop: There is no option " + first + "; see --help.\n";
        static_cast<void>(std::fputs(complaint.c_str(), stderr));
        return 2;
    }
    return std::nullopt;
}

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
    if (const std::optional<int> status = Answer({argv + 1, argv + argc})) {
        return *status;
    }
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
    const quillara::Language language(quillara::Language::Folders(folder));
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
