#pragma once

#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>

#include "workbench/exploration/KeptSession.h"

namespace quillara {

class ExplorationModel;

/// Keeps the exploration on disk a moment after each change, so that it can be gone on with when the program has been
/// killed. Each program that runs has a file of its own in the folder, which goes at a clean end.
class SessionKeeper : public QObject {
    Q_OBJECT

  public:
    /// The model outlives it.
    SessionKeeper(ExplorationModel& model, const QString& folder, QObject* parent = nullptr);

    /// Which file the exploration has begun with.
    void SetFile(const QString& file) { File = file; }
    /// Whom to ask how the windows stand.
    void SetArrangement(std::function<WindowArrangement()> arrangement) { Arrangement = std::move(arrangement); }
    /// Something is another that is kept.
    void NoteChange();
    /// Keeps it now, or removes what is kept when there is nothing to go on with. A disk that is full changes nothing.
    void Keep();
    /// The program ends cleanly.
    void Remove();

    /// The newest session of a program that has been killed; nothing when there is none.
    [[nodiscard]] std::optional<KeptSession> Left();
    /// It won't be offered again.
    void ForgetLeft();

  private:
    ExplorationModel& Model;
    QString Folder;
    QString Own;  // path of the file
    QString OfKilled;  // path of the file that was left
    QLockFile Lock;
    QString File;
    std::function<WindowArrangement()> Arrangement;
    QTimer Waiting;
    bool HasEnded = false;
};

}  // namespace quillara
