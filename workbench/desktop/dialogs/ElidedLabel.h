#pragma once

#include <QLabel>

namespace quillara {

/// A line of text that ends in an ellipsis where there is no room for it; its tip then shows it whole.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool IsCut() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

}  // namespace quillara
