#include "workbench/desktop/dialogs/ShownControls.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>
#include <cmath>

#include "host/TextFunctions.h"
#include "workbench/desktop/dialogs/ReorderList.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/ResourceTexts.h"

namespace quillara {
namespace {

constexpr std::uint32_t GridLines = 1;  // of the extended style
constexpr double ReadableContrast = 4.5;
constexpr int Digits = 15;
constexpr int FieldNumberMode = 5;

QString TextOf(const std::string& text) {
    return QString::fromStdString(text);
}

/// Only the captions of a resource are in the language of the desktop: what the module writes isn't.
QString ShownText(const Control& control) {
    return control.Text == control.Caption ? ResourceText(control.Caption) : TextOf(control.Text);
}

/// A group of which none is checked isn't what the toolkit expects.
void ShowCheck(QAbstractButton& button, bool checked) {
    if (button.isChecked() == checked) {
        return;
    }
    QButtonGroup* group = button.group();
    if (group != nullptr) {
        group->setExclusive(false);
    }
    button.setChecked(checked);
    if (group != nullptr) {
        group->setExclusive(true);
    }
}

void ShowRows(ReorderList& list, const Control& control) {
    list.SetReorders(control.Reordering != nullptr);
    const int count = static_cast<int>(control.Rows.size());
    while (list.count() > count) {
        delete list.takeItem(list.count() - 1);
    }
    for (int row = 0; row < count; ++row) {
        const QString text = TextOf(control.Rows[static_cast<std::size_t>(row)]);
        if (row == list.count()) {
            list.addItem(text);
        } else if (list.item(row)->text() != text) {
            list.item(row)->setText(text);
        }
        list.item(row)->setToolTip(text);
    }
    if (control.Selected != list.currentRow() || (control.Selected >= 0 && !list.currentItem()->isSelected())) {
        list.setCurrentRow(control.Selected);
    }
}

double Entered(const Control& control, double number) {
    return control.Range ? std::clamp(number, control.Range->Lowest, control.Range->Highest) : number;
}

/// What is being typed stays as long as it means the number of the control, or nothing yet.
bool IsBeingTyped(const QLineEdit& field, const Control& control) {
    const std::optional<double> typed = NumberTyped(field);
    return field.isModified() && (!typed || (control.HasNumber && Entered(control, *typed) == control.Number));
}

void ShowNumber(QLineEdit& field, const Control& control) {
    QLocale locale = field.locale();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const QString number = control.HasNumber ? locale.toString(control.Number, 'g', Digits) : QString();
    if (!IsBeingTyped(field, control) && field.text() != number) {
        field.setText(number);
    }
}

void ShowWhole(QSpinBox& field, const Control& control) {
    if (control.Range) {
        field.setRange(static_cast<int>(control.Range->Lowest), static_cast<int>(control.Range->Highest));
    }
    const int number = static_cast<int>(control.Number);
    if (control.HasNumber && field.value() != number) {
        field.setValue(number);
    }
}

/// A selected row is marked as strongly when another window is in front.
void MarkAlways(QWidget& list) {
    QPalette palette = list.palette();
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Inactive, role, QGuiApplication::palette().color(QPalette::Active, role));
    }
    if (palette != list.palette()) {
        list.setPalette(palette);
    }
}

void ShowColour(const Control& control, QWidget& widget) {
    const bool isList = control.IsList();
    if (isList) {
        MarkAlways(widget);
    }
    if (!control.Colour) {
        return;
    }
    const QPalette::ColorRole role = isList ? QPalette::Text : QPalette::WindowText;
    const QPalette usual = widget.parentWidget()->palette();
    QPalette palette = widget.palette();
    const QColor colour = ReadableColour(*control.Colour, usual.color(isList ? QPalette::Base : QPalette::Window));
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        if (palette.color(group, role) != colour) {
            palette.setColor(group, role, colour);
        }
    }
    if (palette != widget.palette()) {
        widget.setPalette(palette);
    }
}

double BrightnessOf(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

double ContrastOf(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({BrightnessOf(one), BrightnessOf(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor ReadableColour(std::uint32_t colour, const QColor& background) {
    QColor readable(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                    static_cast<int>(colour >> 16 & 0xFF));
    const bool becomesLighter = background.lightnessF() < 0.5F;
    constexpr float step = 0.04F;
    while (ContrastOf(readable, background) < ReadableContrast) {
        const float lightness = readable.lightnessF() + (becomesLighter ? step : -step);
        if (lightness <= 0 || lightness >= 1) {
            return becomesLighter ? Qt::white : Qt::black;
        }
        readable.setHslF(std::max(readable.hslHueF(), 0.0F), readable.hslSaturationF(), lightness);
    }
    return readable;
}

void ShowControl(const Control& control, QWidget& widget) {
    const QSignalBlocker quiet(&widget);
    if (widget.isHidden() == control.Visible) {
        widget.setVisible(control.Visible);
    }
    widget.setEnabled(control.Enabled);
    ShowColour(control, widget);
    if (auto* button = qobject_cast<QAbstractButton*>(&widget); button != nullptr && control.IsCheck()) {
        ShowCheck(*button, control.Checked);
    } else if (auto* label = qobject_cast<QLabel*>(&widget); label != nullptr && label->buddy() == nullptr) {
        label->setText(ShownText(control));
    } else if (auto* list = qobject_cast<ReorderList*>(&widget)) {
        ShowRows(*list, control);
    } else if (auto* report = qobject_cast<ReportList*>(&widget)) {
        report->SetGridLines((control.ExtendedStyle & GridLines) != 0);
        report->Show(control);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(&widget)) {
        if (lines->toPlainText() != TextOf(control.Text)) {
            lines->setPlainText(TextOf(control.Text));
        }
    } else if (auto* whole = qobject_cast<QSpinBox*>(&widget)) {
        ShowWhole(*whole, control);
    } else if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
        if (control.IsNumberField()) {
            ShowNumber(*line, control);
        } else if (line->text() != TextOf(control.Text)) {
            line->setText(TextOf(control.Text));
        }
    }
}

std::optional<double> NumberTyped(const QLineEdit& field) {
    bool isNumber = false;
    const double number = field.locale().toDouble(field.text(), &isNumber);
    if (isNumber && field.hasAcceptableInput()) {
        return number;
    }
    const QByteArray text = field.text().trimmed().toUtf8();
    double other = 0.0;
    isNumber = GetDouble(FieldNumberMode, text.constData(), static_cast<int>(text.size()), &other) == 0;
    return isNumber ? std::optional(other) : std::nullopt;
}

}  // namespace quillara
