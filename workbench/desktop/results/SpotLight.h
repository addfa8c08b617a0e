#pragma once

#include <QPolygonF>
#include <QWidget>

namespace quillara {

/// Lights up one place of a chart that it lies above; the pointer passes through it.
class SpotLight : public QWidget {
    Q_OBJECT

  public:
    explicit SpotLight(QWidget* parent);
    /// An empty outline: nothing is lit.
    void Light(const QPolygonF& outline);
    [[nodiscard]] const QPolygonF& Lit() const { return Outline; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPolygonF Outline;
};

}  // namespace quillara
