#pragma once

#include <array>

#include "workbench/desktop/dialogs/DialogView.h"

class QBoxLayout;

namespace quillara {

class ReportList;
class RowSearch;

/// The dialog of two lists of variables: several variables are chosen at once, found as their names or labels are
/// typed, and moved by double clicks, keys and dragging. All goes through the buttons of the window.
class VariableListsView : public DialogView {
    Q_OBJECT

  public:
    VariableListsView(Window& window, Act act, QWidget* parent);

    void Refresh() override;
    [[nodiscard]] RowSearch& Search() { return *Sought; }

  protected:
    void Click(int id) override;
    void DoubleClickRow(int id, int row) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Arrange();
    [[nodiscard]] QBoxLayout* Arranged(std::size_t side);
    [[nodiscard]] ReportList& ListOf(int id) const;
    void Add(std::size_t side, const std::vector<int>& rows);
    void Take(std::size_t side);
    void Drag(int from, const QPoint& place, bool areDropped);
    void Move(int from, int target);
    [[nodiscard]] std::vector<int> RowsOfSame(int list) const;

    RowSearch* Sought = nullptr;
    std::size_t LastSide = 0;  // that something was added to
};

}  // namespace quillara
