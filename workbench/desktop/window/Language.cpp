#include "workbench/desktop/window/Language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <algorithm>

namespace quillara {

Language::Language(const QStringList& folders) {
    const auto isIn = [this](const QString& folder) {
        return Own.load(QLocale(), QStringLiteral("quillara"), QStringLiteral("_"), folder);
    };
    if (std::ranges::none_of(folders, isIn)) {
        return;
    }
    QCoreApplication::installTranslator(&Own);
    const QString toolkit = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (Toolkit.load(QLocale(Own.language()), QStringLiteral("qtbase"), QStringLiteral("_"), toolkit)) {
        QCoreApplication::installTranslator(&Toolkit);
    }
}

QStringList Language::Folders(const QString& settings) {
    const QString name = QStringLiteral("languages");
    QStringList folders;
    if (const QString told = qEnvironmentVariable("QUILLARA_LANGUAGES"); !told.isEmpty()) {
        folders.append(told);
    }
    if (!settings.isEmpty()) {
        folders.append(QDir(settings).filePath(name));
    }
    const QDir programs(QCoreApplication::applicationDirPath());
    folders.append(QDir::cleanPath(programs.filePath(QStringLiteral("../share/quillara/") + name)));
    return folders;
}

}  // namespace quillara
