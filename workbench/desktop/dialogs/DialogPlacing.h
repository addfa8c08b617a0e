#pragma once

#include <QSize>
#include <vector>

#include "platform/DialogResource.h"

class QWidget;

namespace quillara {

/// A widget and the control of the resource that it stands for.
struct PlacedWidget {
    const ControlResource* Control;
    QWidget* Widget;
};

/// Puts the widgets of a dialog, or of a page of one, at the places that its resource gives them, scaled to the font of
/// `page`, and wider or higher where a text needs it. Room beyond what they need is given to what can use it: all
/// becomes wider; lists and edits of several lines become higher. Gives the size that the whole has.
QSize PlaceWidgets(const DialogResource& resource, const std::vector<PlacedWidget>& widgets, QWidget& page,
                   const QSize& room);

}  // namespace quillara
