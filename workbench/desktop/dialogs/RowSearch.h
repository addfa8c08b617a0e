#pragma once

#include <QLineEdit>
#include <cstddef>
#include <string>
#include <vector>

#include "workbench/windows/Control.h"

namespace quillara {

class ReportList;

/// A field in which a person types what the rows of a list are to hold; the others are hidden. The arrow keys go on to
/// the list.
class RowSearch : public QLineEdit {
    Q_OBJECT

  public:
    explicit RowSearch(ReportList& list, QWidget* parent = nullptr);

    /// Hides the rows that don't answer the search; `rows` are those of the list.
    void Apply(const std::vector<ReportRow>& rows);
    /// The first row that is shown; -1: none.
    [[nodiscard]] int FirstFound() const;

  signals:
    /// Return was pressed while something is sought.
    void rowTaken(int row);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    ReportList& List;
    std::string Applied;  // what is sought in the rows that are shown
    std::size_t AppliedTo = 0;  // so many rows
};

}  // namespace quillara
