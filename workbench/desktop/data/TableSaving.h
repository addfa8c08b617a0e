#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "workbench/data/DataTable.h"

class QWidget;

namespace quillara {

/// How the user answers when a table is saved; tests answer themselves.
struct SavingAnswers {
    /// Where to; empty: nowhere.
    std::function<QString(QWidget* parent, const QString& suggested)> ChoosePath;
    /// Shows a message.
    std::function<void(QWidget* parent, const QString& text)> Tell;
};
[[nodiscard]] SavingAnswers AnswersOfUser();

/// The kinds of files that are written, for a file dialog.
[[nodiscard]] QString FiltersOfWrittenFiles();

/// Writes a table to a file in the format of its name, beside the thread of the windows; from a quarter of a second on
/// a window shows it, which can stop it. What the file can't keep, and why it can't be written, the user is told. False
/// when it isn't written, which leaves a file of that name as it was.
bool SaveTable(QWidget* parent, const std::shared_ptr<const DataTable>& table, const QString& path,
               const SavingAnswers& answers);

}  // namespace quillara
