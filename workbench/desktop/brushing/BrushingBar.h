#pragma once

#include <QFrame>
#include <string>
#include <vector>

class QHBoxLayout;
class QPushButton;

namespace quillara {

class ElidedLabel;

/// Stands above a graph whose bars are picked: what can be done with a bar, and a way out.
class BrushingBar : public QFrame {
    Q_OBJECT

  public:
    explicit BrushingBar(QWidget* parent);

    /// Offers these options, captions as of a resource; `stepUp` says what the second does.
    void Offer(const std::vector<std::string>& options, const QString& stepUp);
    /// Says which bar is lit; the first option, which is done with it, needs one.
    void Tell(const QString& bar);
    [[nodiscard]] QPushButton* Button(std::size_t option) const {
        return option < Buttons.size() ? Buttons[option] : nullptr;
    }
    [[nodiscard]] QPushButton* DoneButton() const { return Done; }

  signals:
    void optionTaken(int option);
    void left();

  private:
    QHBoxLayout* Layout;
    ElidedLabel* Text;
    QPushButton* Done;
    std::vector<QPushButton*> Buttons;
};

}  // namespace quillara
