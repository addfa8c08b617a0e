#pragma once

#include <QSyntaxHighlighter>

namespace quillara {

/// Gives the words of a Python text colours, by what they are.
class PythonHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

  public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

  protected:
    void highlightBlock(const QString& text) override;
};

}  // namespace quillara
