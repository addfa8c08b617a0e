#pragma once

#include <QWidget>

namespace quillara {

class VariableModel;

/// Tells that labels or types of variables have been edited, which makes another table, and lets the user have or leave
/// it. It is there only when there are edits.
class LabelEditBar : public QWidget {
    Q_OBJECT

  public:
    /// The model outlives it.
    explicit LabelEditBar(VariableModel& model, QWidget* parent = nullptr);
};

}  // namespace quillara
