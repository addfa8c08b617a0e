#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>

namespace quillara {

/// The language of the desktop: the first of the user's languages that a catalogue is there for, else English. The
/// texts of results, messages of the module and names in scripts are the same in all languages.
///
/// A catalogue is a file quillara_LANGUAGE.qm, such as quillara_de.qm; with it come the toolkit's own texts, where they
/// are installed. It holds while this object is there.
class Language {
  public:
    /// Looks in these folders, the first first.
    explicit Language(const QStringList& folders);

    /// Where catalogues lie: the folder that the variable QUILLARA_LANGUAGES of the environment names, "languages"
    /// beside the user's settings, and what is installed with the program.
    [[nodiscard]] static QStringList Folders(const QString& settings);

    /// Whether a catalogue was found.
    [[nodiscard]] bool IsTranslated() const { return !Own.isEmpty(); }

  private:
    QTranslator Own;
    QTranslator Toolkit;
};

}  // namespace quillara
