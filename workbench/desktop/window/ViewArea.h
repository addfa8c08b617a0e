#pragma once

#include <QScrollArea>

namespace quillara {

/// Shows all of a view where there is room, and parts of it where there isn't. The focus is the view's.
class ViewArea : public QScrollArea {
    Q_OBJECT

  public:
    ViewArea(QWidget* view, QWidget* parent);

    /// That of the view, with room for a bar at its side if it is about as high as the screen.
    [[nodiscard]] QSize sizeHint() const override;
};

}  // namespace quillara
