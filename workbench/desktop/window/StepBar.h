#pragma once

#include <QWidget>
#include <vector>

#include "workbench/exploration/StepTrail.h"

class QMenu;
class QToolButton;

namespace quillara {

/// The path of drill steps as crumbs with what is left behind each: "All 2,000 > sex = Female 1,077 ×". A path that is
/// too long keeps its ends; the places between stand in a menu. Arrows go from crumb to crumb, Delete is the cross.
class StepBar : public QWidget {
    Q_OBJECT

  public:
    explicit StepBar(QWidget* parent = nullptr);

    /// Shows a way; an empty one hides the bar.
    void Show(std::vector<TrailPlace> trail);

    /// The button of a place, from 0 for all cases, and the cross of a step, from 1; null when there is none.
    [[nodiscard]] QToolButton* Crumb(std::size_t place) const;
    [[nodiscard]] QToolButton* Cross(std::size_t place) const;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

  signals:
    /// The user goes back to where the first so many steps are in force.
    void wentBack(std::size_t steps);
    /// The user undoes the step on a variable.
    void undone(const QString& variable);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// The widgets of a place, in their order.
    struct Place {
        QWidget* Arrow;
        QToolButton* Crumb;
        QToolButton* Cross;
    };

    void Add(std::size_t place);
    void Arrange();
    void FillMenu(QMenu& menu, std::size_t first, std::size_t count);
    void OpenMenu(std::size_t place, const QPoint& point);
    [[nodiscard]] int WidthOf(const Place& place) const;
    int Put(QWidget& widget, int x);
    void Undo(std::size_t place);

    std::vector<TrailPlace> Trail;
    std::vector<Place> Places;
    QToolButton* More;  // stands for the places that there is no room for
    QMenu* Hidden;
};

}  // namespace quillara
