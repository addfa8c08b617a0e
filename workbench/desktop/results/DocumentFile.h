#pragma once

#include <QString>
#include <vector>

#include "platform/CountedPointer.h"

class QWidget;

namespace quillara {

class Exploration;
class ResultDocument;

/// Saves a document to a file of the kind that the name ends in: .csv, .xlsx, .html, .json or .txt; a graph also as
/// .svg, .png or .pdf. Throws DataError.
void SaveDocument(Exploration& exploration, ResultDocument& document, const QString& path);

/// Saves several as one report: a page in HTML, or any other of these but the pictures. Throws DataError.
void SaveReport(Exploration& exploration, const std::vector<CountedPointer<ResultDocument>>& documents,
                const QString& path);

/// Asks for a file of one of these kinds, as a file dialog lists them; a name without an end gets that of the kind.
/// Empty: the user has left.
[[nodiscard]] QString AskForFile(QWidget* parent, const QString& title, const QString& suggested, const QString& kinds);

}  // namespace quillara
