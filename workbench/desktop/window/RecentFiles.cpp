#include "workbench/desktop/window/RecentFiles.h"

#include <QFileInfo>

#include "workbench/desktop/window/Preferences.h"

namespace quillara {
namespace {

const QString Name = QStringLiteral("recentFiles");

/// Names of databases are no paths of files.
QString WholePath(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? file.absoluteFilePath() : path;
}

}  // namespace

QStringList RecentFiles::All() {
    return Preferences::Shared().Value(Name).toStringList();
}

void RecentFiles::Add(const QString& path) {
    const QString whole = WholePath(path);
    QStringList files = All();
    files.removeAll(whole);
    files.prepend(whole);
    Preferences::Shared().Remember(Name, files.mid(0, Most));
}

void RecentFiles::Remove(const QString& path) {
    QStringList files = All();
    files.removeAll(WholePath(path));
    files.removeAll(path);
    Preferences::Shared().Remember(Name, files);
}

void RecentFiles::Clear() {
    Preferences::Shared().Remember(Name, QStringList());
}

}  // namespace quillara
