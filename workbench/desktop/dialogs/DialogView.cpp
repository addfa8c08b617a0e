#include "workbench/desktop/dialogs/DialogView.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDoubleValidator>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/desktop/dialogs/ControlWidgets.h"
#include "workbench/desktop/dialogs/ReorderList.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/ResourceTexts.h"
#include "workbench/desktop/dialogs/ShownControls.h"

namespace quillara {
namespace {

bool IsCommand(ControlKind kind) {
    return kind == ControlKind::Button || kind == ControlKind::DefaultButton || kind == ControlKind::CheckBox ||
           kind == ControlKind::RadioButton;
}

/// Scrolls what the widget stands in, where that is higher than its window.
void BringIntoView(QWidget& widget) {
    for (QWidget* around = widget.parentWidget(); around != nullptr; around = around->parentWidget()) {
        if (auto* scroll = qobject_cast<QScrollArea*>(around)) {
            scroll->ensureWidgetVisible(&widget);
        }
    }
}

}  // namespace

DialogView::DialogView(Window& window, Act act, QWidget* parent)
    : QWidget(parent), Shown(&window), ActIn(std::move(act)) {
    setWindowTitle(ResourceText(window.Resource().Title));
    setAccessibleName(windowTitle());
    Build();
}

void DialogView::Build() {
    // A click on a tab or the bare ground stays in the dialog, whose access keys hold from there.
    setFocusPolicy(Qt::ClickFocus);
    installEventFilter(this);
    AddPage(Shown->Resource(), this);
    if (auto* button = qobject_cast<QPushButton*>(Find(OkCommand))) {
        button->setDefault(true);
    }
    DialogView::Refresh();
    PlaceAll();
    resize(Least);
}

void DialogView::AddPage(const DialogResource& resource, QWidget* content) {
    const std::size_t place = Pages.size();
    Pages.push_back({&resource, content, {}});
    QLabel* caption = nullptr;
    QButtonGroup* radios = nullptr;
    for (const ControlResource& control : resource.Controls) {
        QWidget* widget = MakeControlWidget(Shown->Resource().Id, control, content);
        Pages[place].Widgets.push_back({&control, widget});
        Made.push_back({&control, widget});
        Widgets.emplace(control.Id, widget);
        if (caption != nullptr && widget->focusPolicy() != Qt::NoFocus) {
            std::exchange(caption, nullptr)->setBuddy(widget);
        }
        if (auto* label = qobject_cast<QLabel*>(widget); label != nullptr && label->text().contains(u'&')) {
            caption = label;
        }
        if (auto* radio = qobject_cast<QRadioButton*>(widget)) {
            radios = radios == nullptr ? new QButtonGroup(content) : radios;
            radios->addButton(radio);
        }
        Connect(control, *widget);
        widget->installEventFilter(this);
    }
    for (const auto& [control, widget] : Pages[place].Widgets) {
        if (control->Kind == ControlKind::GroupBox) {
            widget->lower();
        }
    }
}

void DialogView::AddTabs(QTabWidget& tabs) {
    Tabs = &tabs;
    for (const DialogResource* resource : Shown->Pages()) {
        auto* content = new QWidget;
        tabs.addTab(content, ResourceText(resource->Title));
        AddPage(*resource, content);
        content->installEventFilter(this);
    }
}

void DialogView::Connect(const ControlResource& control, QWidget& widget) {
    if (IsCommand(control.Kind)) {
        connect(static_cast<QAbstractButton*>(&widget), &QAbstractButton::clicked, this,
                [this, id = control.Id] { Click(id); });
    } else if (control.Kind == ControlKind::TabControl) {
        AddTabs(static_cast<QTabWidget&>(widget));
    } else if (control.Kind == ControlKind::ListBox || control.Kind == ControlKind::ReportList) {
        ConnectList(control.Id, widget);
    } else {
        ConnectField(control.Id, widget);
    }
}

void DialogView::ConnectList(int id, QWidget& widget) {
    auto* view = static_cast<QAbstractItemView*>(&widget);
    // Looking for the first row when the focus comes makes it current and doesn't select it: it isn't chosen.
    const auto choose = [this, view, id] {
        const QModelIndex index = view->currentIndex();
        if (index.isValid() && view->selectionModel()->isSelected(index)) {
            ChooseRow(id, index.row());
        }
    };
    if (auto* list = qobject_cast<ReorderList*>(view)) {
        connect(list, &QListWidget::itemSelectionChanged, this, choose);
        connect(list, &QListWidget::currentItemChanged, this, choose);
        // A click on the row that is selected already is a choice as well: what is typed beside it is taken.
        connect(list, &ReorderList::rowChosenAgain, this,
                [this, id](int row) { Do([=](Window& window) { window.ClickRow(id, row); }); });
        connect(list, &ReorderList::rowMoved, this,
                [this, id](int target) { Do([=](Window& window) { window.Drag(id, target); }); });
    } else if (auto* report = qobject_cast<ReportList*>(view)) {
        connect(report, &QTreeWidget::itemSelectionChanged, this, choose);
        connect(report, &QTreeWidget::currentItemChanged, this, choose);
        connect(report, &QTreeWidget::itemDoubleClicked, this,
                [this, report, id](QTreeWidgetItem* item) { DoubleClickRow(id, report->indexOfTopLevelItem(item)); });
    }
}

void DialogView::ConnectField(int id, QWidget& widget) {
    if (auto* whole = qobject_cast<QSpinBox*>(&widget)) {
        connect(whole, &QSpinBox::valueChanged, this, [this, id](int number) { TypeNumber(id, number); });
        connect(whole, &QSpinBox::editingFinished, this, &DialogView::Refresh);
        return;
    }
    auto* line = qobject_cast<QLineEdit*>(&widget);
    if (line == nullptr) {
        return;
    }
    if (!Shown->At(id).IsNumberField()) {
        connect(line, &QLineEdit::editingFinished, this, &DialogView::Commit);
        return;
    }
    connect(line, &QLineEdit::textEdited, this, [this, id, line] {
        if (const std::optional<double> number = NumberTyped(*line)) {
            TypeNumber(id, *number);
        }
    });
    connect(line, &QLineEdit::editingFinished, this, [this, line] { EndTyping(*line); });
}

/// The field shows what has become of what was typed.
void DialogView::EndTyping(QLineEdit& field) {
    field.setModified(false);
    Refresh();
}

void DialogView::TypeNumber(int id, double number) {
    if (Shown != nullptr && !IsRefreshing) {
        ActIn([=](Window& window) { window.TypeNumber(id, number); });
    }
}

void DialogView::Commit() {
    if (Shown == nullptr || IsRefreshing) {
        return;
    }
    for (const auto& [control, widget] : Made) {
        if (auto* whole = qobject_cast<QSpinBox*>(widget)) {
            whole->interpretText();
        } else if (control->Kind == ControlKind::RealField) {
            qobject_cast<QLineEdit*>(widget)->setModified(false);
        } else if (auto* lines = qobject_cast<QPlainTextEdit*>(widget)) {
            Type(control->Id, lines->toPlainText().toStdString());
        } else if (auto* line = qobject_cast<QLineEdit*>(widget)) {
            Type(control->Id, line->text().toStdString());
        }
    }
}

void DialogView::Type(int id, const std::string& text) {
    const Control& edit = Shown->At(id);
    if (edit.Enabled && edit.Text != text) {
        ActIn([&](Window& window) { window.Type(id, text); });
    }
}

void DialogView::Do(const std::function<void(Window&)>& action) {
    const QPointer<DialogView> isThere(this);
    Commit();
    if (Shown != nullptr && !IsRefreshing) {
        ActIn(action);
    }
    if (isThere) {
        Refresh();
    }
}

void DialogView::Click(int id) {
    Do([this, id](Window& window) { ClickIn ? ClickIn(window, id) : window.Click(id); });
}

void DialogView::ChooseRow(int id, int row) {
    if (Shown != nullptr && Shown->At(id).Selected != row) {
        Do([=](Window& window) { window.ClickRow(id, row); });
    }
}

void DialogView::DoubleClickRow(int id, int row) {
    Do([=](Window& window) { window.DoubleClickRow(id, row); });
}

void DialogView::Refresh() {
    if (Shown == nullptr || IsRefreshing) {
        return;
    }
    IsRefreshing = true;
    for (const auto& [id, widget] : Widgets) {
        if (const Control* control = Shown->Find(id)) {
            ShowControl(*control, *widget);
        }
    }
    IsRefreshing = false;
}

/// A dialog whose widgets stand in a layout is placed by that.
void DialogView::PlaceAll() {
    if (IsPlacing || layout() != nullptr) {
        return;
    }
    IsPlacing = true;
    for (std::size_t page = 1; page < Pages.size(); ++page) {
        const auto& [resource, content, widgets] = Pages[page];
        content->setMinimumSize(PlaceWidgets(*resource, widgets, *content, {}));
    }
    const auto& [resource, content, widgets] = Pages.front();
    Least = PlaceWidgets(*resource, widgets, *content, {});
    PlaceWidgets(*resource, widgets, *content, size());
    for (std::size_t page = 1; page < Pages.size(); ++page) {
        PlaceWidgets(*Pages[page].Resource, Pages[page].Widgets, *Pages[page].Content, Pages[page].Content->size());
    }
    setMinimumSize(Least);
    IsPlacing = false;
}

void DialogView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    PlaceAll();
}

bool DialogView::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Resize:
            PlacePage(watched);
            break;
        case QEvent::FocusOut:
            LeaveField(watched, static_cast<QFocusEvent*>(event)->reason());
            break;
        case QEvent::ShortcutOverride:
            event->setAccepted(WithAccessKey(*static_cast<QKeyEvent*>(event)) != nullptr);
            break;
        case QEvent::KeyPress:
            return UseAccessKey(*static_cast<QKeyEvent*>(event)) || ChangePage(*static_cast<QKeyEvent*>(event));
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

/// Pages are resized by their tabs.
void DialogView::PlacePage(const QObject* content) {
    const auto page =
        std::ranges::find(Pages, content, [](const Page& each) -> const QObject* { return each.Content; });
    if (page != Pages.end() && page->Content != this && !IsPlacing) {
        PlaceWidgets(*page->Resource, page->Widgets, *page->Content, page->Content->size());
    }
}

/// A field of numbers that is left shows its number, also when what was typed isn't one.
void DialogView::LeaveField(QObject* field, Qt::FocusReason reason) {
    auto* line = qobject_cast<QLineEdit*>(field);
    if (line != nullptr && line->validator() != nullptr && reason != Qt::PopupFocusReason &&
        reason != Qt::ActiveWindowFocusReason) {
        EndTyping(*line);
    }
}

/// What has the access key that is pressed; null: nothing that can be used.
QWidget* DialogView::WithAccessKey(const QKeyEvent& key) const {
    if (key.modifiers() != Qt::AltModifier || key.text().isEmpty()) {
        return nullptr;
    }
    const QKeySequence pressed(Qt::AltModifier | static_cast<Qt::Key>(key.key()));
    for (const PlacedWidget& each : Made) {
        const auto* button = qobject_cast<QAbstractButton*>(each.Widget);
        const auto* label = qobject_cast<QLabel*>(each.Widget);
        const QString text = button != nullptr ? button->text() : label != nullptr ? label->text() : QString();
        if (each.Widget->isVisible() && each.Widget->isEnabled() && QKeySequence::mnemonic(text) == pressed) {
            return each.Widget;
        }
    }
    return nullptr;
}

/// While a person works in the dialog its access keys go before those of menus.
bool DialogView::UseAccessKey(const QKeyEvent& key) {
    QWidget* widget = WithAccessKey(key);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setFocus(Qt::ShortcutFocusReason);
        BringIntoView(*button);
        button->click();
    } else if (const auto* label = qobject_cast<QLabel*>(widget); label != nullptr && label->buddy() != nullptr) {
        label->buddy()->setFocus(Qt::ShortcutFocusReason);
        BringIntoView(*label->buddy());
    }
    return widget != nullptr;
}

bool DialogView::ChangePage(const QKeyEvent& key) {
    const bool isNext = key.key() == Qt::Key_PageDown;
    if (Tabs == nullptr || key.modifiers() != Qt::ControlModifier || (!isNext && key.key() != Qt::Key_PageUp)) {
        return false;
    }
    Tabs->tabBar()->setFocus(Qt::ShortcutFocusReason);
    Tabs->setCurrentIndex((Tabs->currentIndex() + (isNext ? 1 : Tabs->count() - 1)) % Tabs->count());
    return true;
}

void DialogView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        PlaceAll();
        if (layout() == nullptr) {
            resize(Least);
        }
    } else if (event->type() == QEvent::PaletteChange) {
        Refresh();
    } else if (event->type() == QEvent::LocaleChange) {
        TakeNotation();
    }
}

/// Numbers are read and shown in the notation of the moment.
void DialogView::TakeNotation() {
    for (const auto& [control, widget] : Made) {
        if (control->Kind == ControlKind::RealField) {
            widget->findChild<QDoubleValidator*>()->setLocale(locale());
            static_cast<QLineEdit*>(widget)->setModified(false);
        }
    }
    Refresh();
}

QSize DialogView::sizeHint() const {
    return layout() == nullptr ? Least : QWidget::sizeHint();
}

QSize DialogView::minimumSizeHint() const {
    return layout() == nullptr ? Least : QWidget::minimumSizeHint();
}

void DialogView::LeaveToLayout(QLayout* layout) {
    setMinimumSize(0, 0);
    setLayout(layout);
}

QWidget* DialogView::Find(int id) const {
    const auto found = Widgets.find(id);
    return found == Widgets.end() ? nullptr : found->second;
}

}  // namespace quillara
