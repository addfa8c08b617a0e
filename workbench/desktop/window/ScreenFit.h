#pragma once

class QWidget;

namespace quillara {

/// Makes a window as small as its screen, so that all of it is seen, also on a small screen or with large texts.
void KeepOnScreen(QWidget& window);

}  // namespace quillara
