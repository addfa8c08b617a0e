#pragma once

#include <QDialog>
#include <vector>

#include "workbench/data/DataTable.h"

class QLabel;
class QTableWidget;

namespace quillara {

/// A value of a variable and its texts, to be edited.
struct EditedValue {
    double Value = 0.0;
    QString Written;  ///< as it stands in the data
    ValueTexts Texts;
};

/// Lets the user write labels and descriptions of values.
class ValueLabelsDialog : public QDialog {
    Q_OBJECT

  public:
    ValueLabelsDialog(const QString& variable, std::vector<EditedValue> values, QWidget* parent = nullptr);

    /// Says something above the values; an empty text: nothing.
    void SetNote(const QString& note);
    /// As they are now.
    [[nodiscard]] std::vector<EditedValue> Edited() const;

  private:
    std::vector<EditedValue> Values;
    QTableWidget* Fields;
    QLabel* Note;
};

}  // namespace quillara
