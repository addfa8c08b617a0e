#include "workbench/desktop/results/SpotLight.h"

#include <QPainter>

namespace quillara {

SpotLight::SpotLight(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    hide();
}

void SpotLight::Light(const QPolygonF& outline) {
    Outline = outline;
    setGeometry(parentWidget()->rect());
    setVisible(!outline.isEmpty());
    raise();
    update();
}

void SpotLight::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    constexpr int glow = 70;
    painter.setBrush(QColor(255, 255, 255, glow));
    painter.setPen(QPen(isDark ? QColor(Qt::white) : QColor(Qt::black), 2.0));
    painter.drawPolygon(Outline);
}

}  // namespace quillara
