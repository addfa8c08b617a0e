#pragma once

#include <QWidget>

namespace quillara {

class ResultDocument;

/// A result document as a widget: a table or a chart. It keeps a reference to the document.
class DocumentView : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;
    /// Shows the document's content, which is another now; scroll, zoom and size stay.
    virtual void Refresh() = 0;
};

/// The view of a document, of its kind.
[[nodiscard]] DocumentView* ViewOf(ResultDocument& document, QWidget* parent);

}  // namespace quillara
