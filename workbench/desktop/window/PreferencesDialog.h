#pragma once

#include <QDialog>

namespace quillara {

/// The user's preferences; a change has its effect at once.
class PreferencesDialog : public QDialog {
    Q_OBJECT

  public:
    explicit PreferencesDialog(QWidget* parent);
};

}  // namespace quillara
