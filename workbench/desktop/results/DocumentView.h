#pragma once

#include <QWidget>
#include <functional>

#include "platform/CountedPointer.h"
#include "workbench/desktop/results/ViewOptions.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/exploration/DrillOffers.h"

class QPrinter;

namespace quillara {

class ExplorationModel;

/// A result document as a widget: a table or a chart. It keeps a reference to the document, and no results of its own.
/// What can be done with it are its actions, which its context menu shows below the drill steps of the place.
class DocumentView : public QWidget {
    Q_OBJECT

  public:
    /// The model outlives it.
    DocumentView(ResultDocument& document, ExplorationModel& model, QWidget* parent);

    /// Shows the document's content, which is another now; scroll, zoom, selection and size stay.
    virtual void Refresh() = 0;
    /// Shows another document of the same kind from now on.
    void Show(ResultDocument& document);
    virtual void SetOptions(const ViewOptions& options) = 0;
    /// Puts what is selected, or all, on the clipboard.
    virtual void Copy() = 0;
    /// The files that it can be saved to, as a file dialog lists them.
    [[nodiscard]] virtual QString FileKinds() const = 0;
    /// Prints it on pages of a printer.
    virtual void Print(QPrinter& printer) = 0;
    /// Saves it to a file of one of these kinds, by the end of its name. Throws DataError.
    void SaveTo(const QString& path);

    [[nodiscard]] ResultDocument& Shown() const { return *Document; }

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// The place under a point, and the one that the keyboard is at with its point.
    [[nodiscard]] virtual DocumentPlace PlaceAt(QPoint point) const = 0;
    [[nodiscard]] virtual DocumentPlace PlaceInFocus(QPoint& point) const = 0;

    QAction* AddAction(const QString& text, const QKeySequence& keys, const std::function<void()>& act);
    [[nodiscard]] ExplorationModel& Model() const { return Explored; }

  private:
    void AddCommonActions();
    void AskWhereToSave();

    CountedPointer<ResultDocument> Document;
    ExplorationModel& Explored;
};

/// The view of a document, of its kind.
[[nodiscard]] DocumentView* ViewOf(ResultDocument& document, ExplorationModel& model, QWidget* parent);

}  // namespace quillara
