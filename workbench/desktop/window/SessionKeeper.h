#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <functional>
#include <vector>

#include "workbench/exploration/KeptSession.h"

namespace quillara {

class ExplorationModel;

/// A session that can be gone on with.
struct LeftSession {
    QString Path;  ///< of its file
    QDateTime Kept;  ///< when it was kept last
    KeptSession Session;

    [[nodiscard]] QString FileName() const;  ///< of its data, without folders
    /// How it stands and when it was left, for people.
    [[nodiscard]] QString State() const;
};

/// Keeps the exploration on disk, so that it can be gone on with: a moment after each change for the case that the
/// program is killed, and when the user leaves it. Each program that runs has a file of its own in the folder, which
/// goes at a clean end; each session that has been left has one, the newest of them are kept.
class SessionKeeper : public QObject {
    Q_OBJECT

  public:
    static constexpr int MostLeft = 5;

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
    /// The user leaves the exploration: keeps it among the sessions that were left. False, and nothing is kept, when
    /// that can't be written.
    [[nodiscard]] bool Leave();
    /// The program ends cleanly.
    void Remove();

    /// The sessions that were left, by the user or by a program that was killed; the newest first.
    [[nodiscard]] std::vector<LeftSession> Left() const;
    /// It won't be offered again.
    static void Forget(const LeftSession& session);

  private:
    [[nodiscard]] bool HasWorkToKeep() const;
    [[nodiscard]] bool Write(const QString& path, bool isLeft);
    [[nodiscard]] QString FreePath() const;

    ExplorationModel& Model;
    QString Folder;
    QString Own;  // path of the file
    QLockFile Lock;
    QString File;
    std::function<WindowArrangement()> Arrangement;
    QTimer Waiting;
    bool HasEnded = false;
};

}  // namespace quillara
