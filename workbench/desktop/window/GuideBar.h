#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace quillara {

class Exploration;
class ExplorationModel;

/// Offers what comes next to whoever has just opened data: the variables, then the first results. It goes once there
/// are some, or when it is put away.
class GuideBar : public QFrame {
    Q_OBJECT

  public:
    /// The model outlives it.
    explicit GuideBar(ExplorationModel& model, QWidget* parent = nullptr);

  signals:
    /// The user explores all variables.
    void allAsked();

  private:
    void Begin();
    void Refresh();
    void AskForVariables();
    void AskForResults();
    [[nodiscard]] bool HasOldResults(Exploration& exploration);
    void TellOfOldResults();

    ExplorationModel& Model;
    QLabel* Text;
    QPushButton* First;
    QPushButton* Second;
    QString BaseOfResults;
    bool IsPutAway = false;
};

}  // namespace quillara
