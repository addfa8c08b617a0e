#pragma once

#include "platform/CountedPointer.h"
#include "workbench/desktop/results/DocumentView.h"
#include "workbench/documents/ResultDocument.h"

class QCustomPlot;

namespace quillara {

/// A graph, painted by the chart library.
class ChartResultView : public DocumentView {
    Q_OBJECT

  public:
    ChartResultView(ResultDocument& document, QWidget* parent);
    void Refresh() override;

  private:
    CountedPointer<ResultDocument> Document;
    QCustomPlot* Plot;
};

}  // namespace quillara
