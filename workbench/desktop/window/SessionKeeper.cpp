#include "workbench/desktop/window/SessionKeeper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <exception>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

constexpr int KeptAfter = 1500;  // milliseconds

QString Path(const QString& folder, const QString& ending) {
    return QDir(folder).filePath(QStringLiteral("session-%1.%2").arg(QCoreApplication::applicationPid()).arg(ending));
}

}  // namespace

SessionKeeper::SessionKeeper(ExplorationModel& model, const QString& folder, QObject* parent)
    : QObject(parent),
      Model(model),
      Folder(folder),
      Own(Path(folder, QStringLiteral("json"))),
      Lock(Own + QStringLiteral(".lock")) {
    QDir().mkpath(folder);
    Lock.setStaleLockTime(0);
    Lock.tryLock(0);
    Waiting.setSingleShot(true);
    connect(&Waiting, &QTimer::timeout, this, &SessionKeeper::Keep);
    connect(&model, &ExplorationModel::changed, this, &SessionKeeper::NoteChange);
}

void SessionKeeper::NoteChange() {
    if (!Waiting.isActive() && !HasEnded) {
        Waiting.start(KeptAfter);
    }
}

void SessionKeeper::Keep() {
    if (Model.IsBusy() && !Model.IsPicking()) {
        Waiting.start(KeptAfter);
        return;
    }
    Exploration* exploration = Model.Present();
    if (exploration == nullptr || exploration->HasEnded() || exploration->Recording().Entries().empty()) {
        QFile::remove(Own);
        return;
    }
    try {
        KeptSession session = SessionOf(*exploration, File.toStdString());
        session.Windows = Arrangement ? Arrangement() : WindowArrangement();
        ReplaceFile(Own.toStdString(), SessionText(session));
    } catch (const std::exception&) {
        // The exploration goes on; it just can't be gone on with after a kill.
    }
}

void SessionKeeper::Remove() {
    HasEnded = true;
    Waiting.stop();
    QFile::remove(Own);
    Lock.unlock();
}

std::optional<KeptSession> SessionKeeper::Left() {
    const QDir folder(Folder);
    for (const QString& name : folder.entryList({QStringLiteral("session-*.json")}, QDir::Files, QDir::Time)) {
        const QString path = folder.filePath(name);
        QLockFile lock(path + QStringLiteral(".lock"));
        lock.setStaleLockTime(0);
        QFile file(path);
        if (path == Own || !lock.tryLock(0) || !file.open(QIODevice::ReadOnly)) {
            continue;  // its program runs
        }
        OfKilled = path;
        try {
            return SessionFrom(file.readAll().toStdString());
        } catch (const std::exception&) {
            ForgetLeft();
        }
    }
    return std::nullopt;
}

void SessionKeeper::ForgetLeft() {
    if (!OfKilled.isEmpty()) {
        QFile::remove(OfKilled);
        OfKilled.clear();
    }
}

}  // namespace quillara
