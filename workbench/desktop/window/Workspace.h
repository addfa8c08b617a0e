#pragma once

#include <QMdiArea>
#include <map>

namespace quillara {

class DocumentView;
class ExplorationModel;
class ResultDocument;

/// Where result windows stand: one for each document of the exploration.
class Workspace : public QMdiArea {
    Q_OBJECT

  public:
    /// The model outlives it.
    explicit Workspace(ExplorationModel& model, QWidget* parent = nullptr);

    /// The view of a document; null when it has none.
    [[nodiscard]] DocumentView* Find(ResultDocument& document) const;

  protected:
    /// A window that the user closes closes its document.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Add(ResultDocument& document);
    void Refresh(ResultDocument& document);
    void Remove(ResultDocument& document);

    ExplorationModel& Model;
    struct Shown {
        QMdiSubWindow* Frame;
        DocumentView* View;
    };
    std::map<ResultDocument*, Shown> Windows;
};

}  // namespace quillara
