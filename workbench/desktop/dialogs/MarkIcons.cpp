#include "workbench/desktop/dialogs/MarkIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>
#include <algorithm>
#include <array>

namespace quillara {
namespace {

struct MarkDrawing {
    std::string_view Mark;
    const char* Shapes;  ///< of a square of 16; "@" is the colour of texts, "#" that of what is pointed out
};

// clang-format off
constexpr std::array<MarkDrawing, 17> Drawings{{
    // drill down: a funnel into fewer; drill up: out of it
    {"!372", R"(<path d="M2 2.5h12l-4.6 5.4v3.3h-2.8v-3.3z" fill="none" stroke="@"/><path d="M8 11.5v3M6.3 13l1.7 1.8 1.7-1.8" fill="none" stroke="#" stroke-width="1.4"/>)"},
    {"!373", R"(<path d="M2 13.5h12l-4.6-5.4v-3.3h-2.8v3.3z" fill="none" stroke="@"/><path d="M8 4.5v-3M6.3 3l1.7-1.8 1.7 1.8" fill="none" stroke="#" stroke-width="1.4"/>)"},
    // brush; select cases: marked rows; weight: a weight with its ring
    {"!664", R"(<path d="M13.8 1.6l-6.6 6.2 1.6 1.6 5.8-7z" fill="none" stroke="@"/><path d="M6.6 8.6c-2.6.2-2.4 3.2-5 4.9 3 1.4 6.4.2 6.4-3.3z" fill="#"/>)"},
    {"!246", R"(<path d="M6.5 3.5h8M6.5 8h8M6.5 12.5h8" stroke="@" stroke-width="1.2"/><path d="M1 3.4l1.4 1.5 2.4-3M1 12.4l1.4 1.5 2.4-3" fill="none" stroke="#" stroke-width="1.4"/>)"},
    {"!247", R"(<circle cx="8" cy="3.6" r="2" fill="none" stroke="@"/><path d="M4 6h8l2.2 8.5H1.8z" fill="#" fill-opacity=".55" stroke="@"/>)"},
    // variables; order; table
    {"h", R"(<path d="M1.5 2.5h13v11h-13z" fill="none" stroke="@"/><path d="M5.8 2.5v11M10.2 2.5v11" stroke="@"/><path d="M6.3 3h3.4v10h-3.4z" fill="#" fill-opacity=".6"/>)"},
    {"j", R"(<path d="M2 3.5h6M2 8h6M2 12.5h6" stroke="@" stroke-width="1.4"/><path d="M12 2v12M9.8 4.2L12 1.8l2.2 2.4M9.8 11.8L12 14.2l2.2-2.4" fill="none" stroke="#" stroke-width="1.3"/>)"},
    {"e", R"(<path d="M1.5 2.5h13v11h-13z" fill="none" stroke="@"/><path d="M2 3h12v3H2z" fill="#" fill-opacity=".6"/><path d="M1.5 6.2h13M1.5 9.8h13M6 6v7.5" stroke="@"/>)"},
    // histogram; pie; summary; box plot; scatterplot; 3D histogram; stacked bars
    {"!223", R"(<path d="M3 14V9h2.6v5M6.6 14V3.5h2.6V14M10.2 14V6.5h2.6V14" fill="#" fill-opacity=".6" stroke="@"/><path d="M1 14.4h14" stroke="@"/>)"},
    {"!280", R"(<circle cx="8" cy="8" r="6.3" fill="none" stroke="@"/><path d="M8 8V1.7A6.3 6.3 0 0 1 13.6 11z" fill="#" fill-opacity=".7" stroke="@"/>)"},
    {"!249", R"(<path d="M3 1.5h7l3 3v10H3z" fill="none" stroke="@"/><path d="M5 6.5h6M5 9h6" stroke="@"/><path d="M5 11.8h4" stroke="#" stroke-width="1.6"/>)"},
    {"!225", R"(<path d="M4 5.5h8v6H4z" fill="#" fill-opacity=".55" stroke="@"/><path d="M4 8.3h8M8 5.5V1.8M8 11.5v2.8M6 1.8h4M6 14.3h4" stroke="@"/>)"},
    {"!229", R"(<path d="M2 1.5v12.5h12.5" fill="none" stroke="@"/><g fill="#"><circle cx="5" cy="11" r="1.2"/><circle cx="7" cy="8.2" r="1.2"/><circle cx="10" cy="8.8" r="1.2"/><circle cx="10.6" cy="5" r="1.2"/><circle cx="13.2" cy="3.2" r="1.2"/></g>)"},
    {"!231", R"(<path d="M3.5 13.5v-7h4v7zM3.5 6.5l2-2h4l-2 2M7.5 13.5l2-2v-7" fill="#" fill-opacity=".55" stroke="@"/><path d="M9.6 13.5V9.8h3v3.7zM9.6 9.8l1.4-1.4h3l-1.4 1.4M12.6 13.5l1.4-1.4V8.4" fill="none" stroke="@"/>)"},
    {"!248", R"(<path d="M3 8.5h4v5.5H3zM9 6h4v8H9z" fill="#" fill-opacity=".6" stroke="@"/><path d="M3 4.5h4v4H3zM9 2h4v4H9z" fill="none" stroke="@"/>)"},
    // save; open
    {"!654", R"(<path d="M2 2h10l2 2v10H2z" fill="none" stroke="@"/><path d="M5 2h5.5v4H5z" fill="#" fill-opacity=".6" stroke="@"/><path d="M4.5 9h7v5h-7z" fill="none" stroke="@"/>)"},
    {"`", R"(<path d="M1.5 13.5v-10h4.5l1.5 2h6v2" fill="none" stroke="@"/><path d="M1.5 13.5l2.6-6h11l-2.6 6z" fill="#" fill-opacity=".55" stroke="@"/>)"},
}};
// clang-format on

QByteArray DrawnIn(const char* shapes, const QPalette& palette, bool isDisabled) {
    const auto group = isDisabled ? QPalette::Disabled : QPalette::Active;
    const QColor text = palette.color(group, QPalette::ButtonText);
    const QColor mark = isDisabled ? text : palette.color(group, QPalette::Highlight);
    QByteArray drawing(shapes);
    drawing.replace('#', mark.name().replace(u'#', u'?').toLatin1());
    drawing.replace("@", text.name().toLatin1());
    drawing.replace('?', "#");
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16" stroke-linejoin="round">)" + drawing +
           "</svg>";
}

/// Draws in the colours of the moment, so that it follows a change from light to dark.
class MarkIconEngine : public QIconEngine {
  public:
    explicit MarkIconEngine(const char* shapes) : Shapes(shapes) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State /*state*/) override {
        QSvgRenderer renderer(DrawnIn(Shapes, QGuiApplication::palette(), mode == QIcon::Disabled));
        renderer.render(painter, place);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(&painter, {{0, 0}, size}, mode, state);
        return picture;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new MarkIconEngine(Shapes); }

  private:
    const char* Shapes;
};

}  // namespace

QIcon MarkIcon(std::string_view mark) {
    const auto* const drawing = std::ranges::find(Drawings, mark, &MarkDrawing::Mark);
    return drawing == Drawings.end() ? QIcon() : QIcon(new MarkIconEngine(drawing->Shapes));
}

}  // namespace quillara
