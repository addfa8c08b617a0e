#pragma once

#include <QFrame>
#include <optional>

#include "workbench/exploration/ResultBases.h"

class QLabel;
class QPushButton;

namespace quillara {

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
    void TellOfOldResults();

    ExplorationModel& Model;
    QLabel* Text;
    QPushButton* First;
    QPushButton* Second;
    std::optional<CasesInForce> PutAwayWith;  // when old results had been told
    bool IsPutAway = false;
};

}  // namespace quillara
