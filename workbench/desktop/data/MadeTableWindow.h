#pragma once

#include <QMdiSubWindow>
#include <functional>
#include <memory>

#include "workbench/data/DataTable.h"
#include "workbench/desktop/data/TableSaving.h"

class QLabel;

namespace quillara {

class CaseGridView;

/// A table that the analysis has made, until it is saved as a file in the user's care: closing asks about it.
class MadeTableWindow : public QMdiSubWindow {
    Q_OBJECT

  public:
    /// What to do with a table that isn't saved.
    enum class Unsaved { Save, Discard, Keep };
    struct Answers {
        SavingAnswers Saving;
        std::function<Unsaved(MadeTableWindow& window)> AskUnsaved;
        std::function<void(const QString& path)> OpenAnew;  ///< as a new exploration
    };
    [[nodiscard]] static Answers AnswersOfUser();

    MadeTableWindow(std::shared_ptr<const DataTable> table, const QString& name, Answers answers);

    [[nodiscard]] bool IsSaved() const { return !File.isEmpty(); }
    [[nodiscard]] const QString& TableName() const { return Name; }
    /// Asks where to and saves; false when it isn't saved.
    bool SaveAs();
    /// Saves the table first when it isn't, as a script that is recorded there opens the file.
    void OpenAsExploration();
    /// Asks about a table that isn't saved; false when the user wants to keep it open.
    bool MayClose();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* MakeContent();
    void ShowName();

    std::shared_ptr<const DataTable> Table;
    QString Name;
    QString File;
    Answers Answering;
    bool IsSaving = false;
};

}  // namespace quillara
