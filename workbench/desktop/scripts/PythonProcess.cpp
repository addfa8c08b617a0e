#include "workbench/desktop/scripts/PythonProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

#include <csignal>

namespace quillara {
namespace {

constexpr int Patience = 2000;  // milliseconds
constexpr int LeastPatience = 500;

/// Beside this program; else wherever programs are looked for.
QString CommandLineProgram() {
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/quillara");
    return QFileInfo(beside).isExecutable() ? beside : QStringLiteral("quillara");
}

}  // namespace

PythonProcess::PythonProcess(QObject* parent) : QProcess(parent) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PYTHONUNBUFFERED"), QStringLiteral("1"));
    environment.insert(QStringLiteral("PYTHONIOENCODING"), QStringLiteral("utf-8"));
    setProcessEnvironment(environment);
}

PythonProcess::~PythonProcess() {
    disconnect();
    if (IsRunning()) {
        kill();
        waitForFinished(LeastPatience);
    }
}

void PythonProcess::Begin(const QStringList& arguments) {
    start(CommandLineProgram(), QStringList{QStringLiteral("run")} + arguments);
}

void PythonProcess::RunScript(const QString& path, const QString& folder) {
    setWorkingDirectory(folder);
    Begin({QStringLiteral("--format"), QStringLiteral("text"), QStringLiteral("--"), path});
    closeWriteChannel();
}

/// The program runs files only: this one calls the console of the package.
void PythonProcess::BeginConsole() {
    const QString starter =
        QDir::temp().filePath(QStringLiteral("quillara-console-%1.py").arg(QCoreApplication::applicationPid()));
    QFile file(starter);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write("import os\nos.unlink(__file__)\nfrom quillara import _console\n_console.serve()\n");
        file.close();
    }
    Begin({QStringLiteral("--"), starter});
}

void PythonProcess::Interrupt(bool mustEnd) {
    if (!IsRunning()) {
        return;
    }
    ::kill(static_cast<pid_t>(processId()), SIGINT);
    if (mustEnd) {
        QTimer::singleShot(Patience, this, [this, begun = processId()] {
            if (processId() == begun) {
                kill();
            }
        });
    }
}

}  // namespace quillara
