#pragma once

#include <QFrame>

class QCheckBox;
class QLabel;
class QPushButton;

namespace quillara {

class Exploration;

/// Six tips for a new user, one at a time, in a strip that covers nothing. It can be put away for now, or for good.
class TipTour : public QFrame {
    Q_OBJECT

  public:
    explicit TipTour(QWidget* parent);

    /// Begins with the first tip.
    void Begin();
    /// Begins unless the user has put it away for good.
    void Greet();
    /// A tip that has been followed gives way to the next one.
    void GoOnAfter(Exploration& exploration);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Show(int tip);
    void PutAway();

    int Present = 0;
    QLabel* Title;
    QLabel* Text;
    QLabel* Place;
    QCheckBox* ForGood;
    QPushButton* Back;
    QPushButton* On;
};

}  // namespace quillara
