#include "workbench/desktop/dialogs/RowSearch.h"

#include <QKeyEvent>

#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/dialogs/VariableSearch.h"

namespace quillara {

RowSearch::RowSearch(ReportList& list, QWidget* parent) : QLineEdit(parent), List(list) {
    setPlaceholderText(tr("Search names and labels"));
    setToolTip(tr("Shows the variables in whose name, type or label these words stand. Return takes the first"));
    setAccessibleName(tr("Search variables"));
    setClearButtonEnabled(true);
}

void RowSearch::Apply(const std::vector<ReportRow>& rows) {
    const std::string sought = text().toStdString();
    if (sought == Applied && rows.size() == AppliedTo) {
        return;
    }
    Applied = sought;
    AppliedTo = rows.size();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        List.setRowHidden(static_cast<int>(i), {}, !AnswersSearch(rows[i], sought));
    }
}

int RowSearch::FirstFound() const {
    int row = 0;
    while (row < List.topLevelItemCount() && List.isRowHidden(row, {})) {
        ++row;
    }
    return row < List.topLevelItemCount() ? row : -1;
}

void RowSearch::keyPressEvent(QKeyEvent* event) {
    const int found = FirstFound();
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Down && found >= 0) {
        List.setFocus();
        List.setCurrentItem(List.topLevelItem(found));
    } else if (isReturn && !text().isEmpty()) {
        if (found >= 0) {
            emit rowTaken(found);
        }
        selectAll();
    } else if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

}  // namespace quillara
