#pragma once

#include <QProcess>

namespace quillara {

/// A process of Python with the package, begun by the command-line program that stands beside this one.
class PythonProcess : public QProcess {
    Q_OBJECT

  public:
    explicit PythonProcess(QObject* parent = nullptr);
    /// Ends what runs.
    ~PythonProcess() override;

    [[nodiscard]] bool IsRunning() const { return state() != NotRunning; }
    /// Runs a script, whose documents follow behind what it prints; `folder` is where it runs.
    void RunScript(const QString& path, const QString& folder);
    /// Begins a console (python/quillara/_console.py).
    void BeginConsole();
    /// As Ctrl-C does; what doesn't end by that within two seconds is killed if `mustEnd`.
    void Interrupt(bool mustEnd);

  private:
    void Begin(const QStringList& arguments);
};

}  // namespace quillara
