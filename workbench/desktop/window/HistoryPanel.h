#pragma once

#include <QListWidget>

namespace quillara {

class ExplorationModel;

/// The states that the exploration has been in, the oldest first; a click goes to one. Those that have been undone are
/// pale.
class HistoryPanel : public QListWidget {
    Q_OBJECT

  public:
    /// The model outlives it.
    explicit HistoryPanel(ExplorationModel& model, QWidget* parent = nullptr);

  private:
    void Refresh();
    void GoTo(int row);

    ExplorationModel& Model;
};

}  // namespace quillara
