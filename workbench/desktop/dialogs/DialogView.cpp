#include "workbench/desktop/dialogs/DialogView.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTreeWidget>
#include <utility>

#include "workbench/exploration/ControlCaption.h"

namespace quillara {
namespace {

QString TextOf(const std::string& text) {
    return QString::fromStdString(text);
}

/// What dialog units measure: a quarter of the mean width of a letter, an eighth of the height of a line.
struct DialogUnits {
    double Across;
    double Down;
};

DialogUnits UnitsOf(const QWidget& widget) {
    static const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const QFontMetricsF metrics(widget.font());
    constexpr double heightShare = 1.4;  // controls of this toolkit have wider edges
    return {metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()) / 4 * 1.15,
            metrics.height() * heightShare / 10};
}

QRect PixelsOf(const DialogRectangle& place, const DialogUnits& units) {
    return QRectF(place.X * units.Across, place.Y * units.Down, place.Width * units.Across, place.Height * units.Down)
        .toRect();
}

}  // namespace

DialogView::DialogView(Window& window, Act act, QWidget* parent)
    : QWidget(parent), Shown(&window), ActIn(std::move(act)) {
    const DialogUnits units = UnitsOf(*this);
    const DialogResource& resource = window.Resource();
    AddControls(resource, this);
    setFixedSize(PixelsOf({0, 0, resource.Width, resource.Height}, units).size());
    setWindowTitle(QString::fromUtf8(resource.Title));
    Refresh();
}

void DialogView::AddControls(const DialogResource& resource, QWidget* page) {
    const DialogUnits units = UnitsOf(*this);
    for (const ControlResource& row : resource.Controls) {
        QWidget* widget = Make(row, page);
        widget->setGeometry(PixelsOf(row.Place, units));
        widget->setObjectName(QStringLiteral("control%1").arg(row.Id));
        Widgets.emplace(row.Id, widget);
        if (row.Kind == ControlKind::GroupBox) {
            widget->lower();
        }
    }
}

QWidget* DialogView::Make(const ControlResource& row, QWidget* page) {
    switch (row.Kind) {
        case ControlKind::Button:
        case ControlKind::DefaultButton:
        case ControlKind::CheckBox:
        case ControlKind::RadioButton:
            return MakeButton(row, page);
        case ControlKind::GroupBox:
            return new QGroupBox(TextOf(CaptionOf(row.Caption).Text), page);
        case ControlKind::ListBox:
            return MakeList(row, page);
        case ControlKind::ReportList:
            return MakeReport(row, page);
        case ControlKind::Edit:
        case ControlKind::MultiLineEdit:
        case ControlKind::IntegerField:
        case ControlKind::RealField:
            return MakeField(row, page);
        case ControlKind::TabControl:
            Tabs = new QTabWidget(page);
            for (const DialogResource* resource : Shown->Pages()) {
                auto* content = new QWidget;
                Tabs->addTab(content, QString::fromUtf8(resource->Title));
                AddControls(*resource, content);
            }
            return Tabs;
        default: {
            auto* label = new QLabel(QString::fromUtf8(row.Caption), page);
            label->setWordWrap(row.Kind == ControlKind::HelpText);
            return label;
        }
    }
}

QWidget* DialogView::MakeButton(const ControlResource& row, QWidget* page) {
    const QString text = TextOf(CaptionOf(row.Caption).Text);
    QAbstractButton* button = nullptr;
    if (row.Kind == ControlKind::CheckBox) {
        button = new QCheckBox(text, page);
    } else if (row.Kind == ControlKind::RadioButton) {
        button = new QRadioButton(text, page);
    } else {
        button = new QPushButton(text, page);
    }
    connect(button, &QAbstractButton::clicked, this,
            [this, id = row.Id] { Do([id](Window& window) { window.Click(id); }); });
    return button;
}

QWidget* DialogView::MakeList(const ControlResource& row, QWidget* page) {
    auto* list = new QListWidget(page);
    connect(list, &QListWidget::currentRowChanged, this, [this, id = row.Id](int place) {
        if (place >= 0) {
            Do([=](Window& window) { window.ClickRow(id, place); });
        }
    });
    return list;
}

QWidget* DialogView::MakeReport(const ControlResource& row, QWidget* page) {
    auto* list = new QTreeWidget(page);
    list->setRootIsDecorated(false);
    connect(list, &QTreeWidget::currentItemChanged, this, [this, list, id = row.Id](QTreeWidgetItem* item) {
        if (item != nullptr) {
            Do([=](Window& window) { window.ClickRow(id, list->indexOfTopLevelItem(item)); });
        }
    });
    connect(list, &QTreeWidget::itemDoubleClicked, this, [this, list, id = row.Id](QTreeWidgetItem* item) {
        Do([=](Window& window) { window.DoubleClickRow(id, list->indexOfTopLevelItem(item)); });
    });
    return list;
}

QWidget* DialogView::MakeField(const ControlResource& row, QWidget* page) {
    const int id = row.Id;
    if (row.Kind == ControlKind::MultiLineEdit) {
        auto* edit = new QPlainTextEdit(page);
        connect(edit, &QPlainTextEdit::textChanged, this,
                [this, edit, id] { Do([=](Window& window) { window.Type(id, edit->toPlainText().toStdString()); }); });
        return edit;
    }
    auto* edit = new QLineEdit(page);
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, id, kind = row.Kind] {
        bool isNumber = false;
        const double number = locale().toDouble(edit->text(), &isNumber);
        if (kind == ControlKind::Edit) {
            Do([=](Window& window) { window.Type(id, edit->text().toStdString()); });
        } else if (isNumber && edit->isModified()) {
            Do([=](Window& window) { window.TypeNumber(id, number); });
        }
    });
    return edit;
}

void DialogView::Refresh() {
    if (Shown == nullptr || IsRefreshing) {
        return;
    }
    IsRefreshing = true;
    for (const auto& [id, widget] : Widgets) {
        if (const Control* control = Shown->Find(id)) {
            const QSignalBlocker quiet(widget);
            Show(*control, *widget);
        }
    }
    IsRefreshing = false;
}

void DialogView::Show(const Control& control, QWidget& widget) {
    widget.setVisible(control.Visible);
    widget.setEnabled(control.Enabled);
    if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        if (control.IsCheck()) {
            button->setCheckable(true);
            button->setAutoExclusive(false);
            button->setChecked(control.Checked);
        }
    } else if (auto* label = qobject_cast<QLabel*>(&widget)) {
        label->setText(TextOf(control.Text));
    } else if (auto* list = qobject_cast<QListWidget*>(&widget)) {
        list->clear();
        for (const std::string& row : control.Rows) {
            list->addItem(TextOf(row));
        }
        list->setCurrentRow(control.Selected);
    } else if (auto* report = qobject_cast<QTreeWidget*>(&widget)) {
        QStringList headings;
        for (const ReportColumn& column : control.Columns) {
            headings.append(TextOf(column.Heading));
        }
        report->clear();
        report->setColumnCount(static_cast<int>(headings.size()));
        report->setHeaderLabels(headings);
        for (const ReportRow& row : control.ReportRows) {
            auto* item = new QTreeWidgetItem(report);
            for (std::size_t cell = 0; cell < row.Cells.size(); ++cell) {
                item->setText(static_cast<int>(cell), TextOf(row.Cells[cell]));
            }
        }
        report->setCurrentItem(report->topLevelItem(control.Selected));
    } else if (auto* text = qobject_cast<QPlainTextEdit*>(&widget)) {
        if (text->toPlainText().toStdString() != control.Text) {
            text->setPlainText(TextOf(control.Text));
        }
    } else if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
        line->setText(control.IsNumberField() ? (control.HasNumber ? locale().toString(control.Number) : QString())
                                              : TextOf(control.Text));
    }
}

void DialogView::Do(const std::function<void(Window&)>& action) {
    if (Shown != nullptr && !IsRefreshing) {
        ActIn(action);
        Refresh();
    }
}

QWidget* DialogView::Find(int id) const {
    const auto found = Widgets.find(id);
    return found == Widgets.end() ? nullptr : found->second;
}

}  // namespace quillara
