#include "workbench/desktop/window/SessionKeeper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>
#include <exception>
#include <optional>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

constexpr int KeptAfter = 1500;  // milliseconds

/// The file of a program that runs, or of a session that was left under a number.
QString Path(const QString& folder, const QString& number) {
    return QDir(folder).filePath(
        QStringLiteral("session-%1%2.json").arg(QCoreApplication::applicationPid()).arg(number));
}

/// What a file holds, unless its program runs. A damaged one is removed.
std::optional<KeptSession> ReadLeft(const QString& path) {
    QLockFile lock(path + QStringLiteral(".lock"));
    lock.setStaleLockTime(0);
    QFile file(path);
    if (!lock.tryLock(0) || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    try {
        return SessionFrom(file.readAll().toStdString());
    } catch (const std::exception&) {
        file.remove();
        return std::nullopt;
    }
}

}  // namespace

QString LeftSession::FileName() const {
    return QFileInfo(QString::fromStdString(Session.File)).fileName();
}

QString LeftSession::State() const {
    QString state = QString::fromStdString(Session.State);
    if (const std::size_t results = Session.Documents.size(); results > 0) {
        const QString count =
            results == 1 ? SessionKeeper::tr("1 result") : SessionKeeper::tr("%1 results").arg(results);
        state += (state.isEmpty() ? QString() : QStringLiteral("; ")) + count;
    }
    const QString when = QLocale().toString(Kept, QLocale::ShortFormat);
    return Session.WasLeft ? SessionKeeper::tr("As you left it on %1: %2").arg(when, state)
                           : SessionKeeper::tr("The program ended before you had finished, on %1: %2").arg(when, state);
}

SessionKeeper::SessionKeeper(ExplorationModel& model, const QString& folder, QObject* parent)
    : QObject(parent), Model(model), Folder(folder), Own(Path(folder, QString())), Lock(Own + QStringLiteral(".lock")) {
    QDir().mkpath(folder);
    if (QFile::exists(Own)) {
        QFile::rename(Own, FreePath());  // of a killed program that had the same number
    }
    Lock.setStaleLockTime(0);
    Lock.tryLock(0);
    Waiting.setSingleShot(true);
    connect(&Waiting, &QTimer::timeout, this, &SessionKeeper::Keep);
    connect(&model, &ExplorationModel::changed, this, &SessionKeeper::NoteChange);
}

QString SessionKeeper::FreePath() const {
    int number = 1;
    while (QFile::exists(Path(Folder, QStringLiteral("-%1").arg(number)))) {
        ++number;
    }
    return Path(Folder, QStringLiteral("-%1").arg(number));
}

void SessionKeeper::NoteChange() {
    if (!Waiting.isActive() && !HasEnded) {
        Waiting.start(KeptAfter);
    }
}

bool SessionKeeper::HasWorkToKeep() const {
    return Model.Present() != nullptr && HasWork(*Model.Present());
}

bool SessionKeeper::Write(const QString& path, bool isLeft) {
    try {
        KeptSession session = SessionOf(*Model.Present(), File.toStdString());
        session.Windows = Arrangement ? Arrangement() : WindowArrangement();
        session.WasLeft = isLeft;
        ReplaceFile(path.toStdString(), SessionText(session));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void SessionKeeper::Keep() {
    if (Model.IsBusy() && !Model.IsPicking()) {
        Waiting.start(KeptAfter);
    } else if (HasWorkToKeep()) {
        static_cast<void>(Write(Own, false));
    } else {
        QFile::remove(Own);
    }
}

bool SessionKeeper::Leave() {
    if (HasWorkToKeep() && !Write(FreePath(), true)) {
        return false;
    }
    QFile::remove(Own);
    const std::vector<LeftSession> left = Left();
    for (std::size_t old = MostLeft; old < left.size(); ++old) {
        Forget(left[old]);
    }
    return true;
}

void SessionKeeper::Remove() {
    HasEnded = true;
    Waiting.stop();
    QFile::remove(Own);
    Lock.unlock();
}

std::vector<LeftSession> SessionKeeper::Left() const {
    std::vector<LeftSession> left;
    const QDir folder(Folder);
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("session-*.json")}, QDir::Files, QDir::Time)) {
        const QString path = folder.filePath(file.fileName());
        if (path == Own) {
            continue;
        }
        if (auto session = ReadLeft(path)) {
            left.push_back({path, file.lastModified(), std::move(*session)});
        }
    }
    return left;
}

void SessionKeeper::Forget(const LeftSession& session) {
    QFile::remove(session.Path);
}

}  // namespace quillara
