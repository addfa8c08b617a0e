#pragma once

#include <QObject>
#include <map>

class QAction;
class QMenu;

namespace quillara {

class ExplorationModel;

/// The buttons of the startup dialog as actions of a menu, so that each has a key and stands in the search; an action
/// can be taken when its button can be pressed.
class ExploreMenu : public QObject {
    Q_OBJECT

  public:
    /// Fills a menu for steps and one for results. The model outlives it.
    ExploreMenu(ExplorationModel& model, QMenu& steps, QMenu& results, QObject* parent = nullptr);

    /// The action of a button.
    [[nodiscard]] QAction* Of(int button) const { return Actions.at(button); }

  signals:
    /// The user explores all variables.
    void allAsked();

  private:
    void Refresh();

    ExplorationModel& Model;
    std::map<int, QAction*> Actions;
    QAction* ExploreEverything = nullptr;
};

}  // namespace quillara
