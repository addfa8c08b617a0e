#include "workbench/desktop/window/OutlinedStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace quillara {
namespace {

constexpr int Dark = 128;  // a colour darker than the middle
constexpr double Strength = 0.6;  // of the text, which it is drawn with

bool IsBox(QStyle::PrimitiveElement element) {
    return element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorItemViewItemCheck;
}

}  // namespace

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRadio = element == PE_IndicatorRadioButton;
    if ((!isRadio && !IsBox(element)) || option->palette.color(QPalette::Window).lightness() >= Dark) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QColor colour = option->palette.color(QPalette::WindowText);
    colour.setAlphaF(static_cast<float>(Strength));
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    isRadio ? painter->drawEllipse(outline) : painter->drawRect(outline);
    painter->restore();
}

}  // namespace quillara
