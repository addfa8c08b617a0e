#pragma once

#include <QProxyStyle>

namespace quillara {

/// The usual style with outlines that can be seen around boxes and radio buttons of dark windows, where the usual ones
/// are darker than what they stand on.
class OutlinedStyle : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace quillara
