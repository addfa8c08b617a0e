#pragma once

#include "workbench/desktop/dialogs/DialogView.h"

class QLabel;
class QListWidget;

namespace quillara {

class OpenDataDialog;
class RowSearch;

/// The weight dialog, with a search over the variables.
class WeightView : public DialogView {
    Q_OBJECT

  public:
    WeightView(Window& window, Act act, QWidget* parent);

    void Refresh() override;

  private:
    RowSearch* Sought = nullptr;
};

/// The dialog that opens data, with a file chooser, the files opened last, and paths completed as they are typed. While
/// a file is read the dialog lives, and the user can cancel.
class OpenDataView : public DialogView {
    Q_OBJECT

  public:
    OpenDataView(Window& window, OpenDataDialog& dialog, Act act, QWidget* parent);

    void Refresh() override;

  protected:
    void Click(int id) override;

  private:
    [[nodiscard]] QListWidget* ListRecent();
    [[nodiscard]] bool ReadFirst();
    void Browse();
    void Open(const QString& path);

    OpenDataDialog& Dialog;
    QWidget* Chooser = nullptr;  // the button
    QListWidget* Recent = nullptr;
};

/// The dialog of the order: once a row has been placed or taken back the next one is selected, and a double click does
/// the same as the button.
class OrderView : public DialogView {
    Q_OBJECT

  public:
    OrderView(Window& window, Act act, QWidget* parent);

  protected:
    void Click(int id) override;
};

/// The dialog of boundaries, which shows the ranges that the list gives while it is typed, or what is wrong with it.
class BoundariesView : public DialogView {
    Q_OBJECT

  public:
    BoundariesView(Window& window, Act act, QWidget* parent);

    [[nodiscard]] QString Ranges() const;

  private:
    void ShowRanges();

    QLabel* Preview;
};

}  // namespace quillara
