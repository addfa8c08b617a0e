#pragma once

#include <QFrame>
#include <cstddef>

#include "workbench/documents/Remarks.h"

class QLabel;
class QToolButton;

namespace quillara {

/// What the user should know of the data and the analysis, though the work goes on: one remark at a time, each once, in
/// a bar that can be put away.
class RemarkBar : public QFrame {
    Q_OBJECT

  public:
    explicit RemarkBar(QWidget* parent = nullptr);

    /// Shows a remark that is new.
    void Add(const Remark& remark);
    /// Another table has other remarks.
    void Clear();
    /// Shows the bar again, if there are remarks.
    void ShowAgain();
    [[nodiscard]] const std::vector<Remark>& All() const { return Made.All(); }

  private:
    void Turn(int by);
    void ShowPresent();

    Remarks Made;
    std::size_t Present = 0;
    QLabel* Text;
    QLabel* Place;
    QToolButton* Back;
    QToolButton* On;
};

}  // namespace quillara
