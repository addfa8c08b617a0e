#pragma once

#include "platform/CountedPointer.h"
#include "workbench/desktop/results/DocumentView.h"
#include "workbench/documents/ResultDocument.h"

class QLabel;
class QTableWidget;

namespace quillara {

/// A spreadsheet of results with its title.
class TableResultView : public DocumentView {
    Q_OBJECT

  public:
    TableResultView(ResultDocument& document, QWidget* parent);
    void Refresh() override;

  private:
    CountedPointer<ResultDocument> Document;
    QLabel* Title;
    QTableWidget* Table;
};

}  // namespace quillara
