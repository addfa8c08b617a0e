#include "workbench/desktop/dialogs/ControlWidgets.h"

#include <QCheckBox>
#include <QDoubleValidator>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QWheelEvent>
#include <string_view>

#include "workbench/desktop/dialogs/ControlTips.h"
#include "workbench/desktop/dialogs/ElidedLabel.h"
#include "workbench/desktop/dialogs/MarkIcons.h"
#include "workbench/desktop/dialogs/ReorderList.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/ResourceTexts.h"

namespace quillara {
namespace {

constexpr int HeightOfTwoLines = 18;  // in dialog units

bool IsCaptioned(ControlKind kind) {
    return kind == ControlKind::Button || kind == ControlKind::DefaultButton || kind == ControlKind::CheckBox ||
           kind == ControlKind::RadioButton || kind == ControlKind::GroupBox;
}

QWidget* MakeButton(const ControlResource& control, QWidget* parent) {
    auto* button = new QPushButton(CaptionText(control), parent);
    button->setIcon(MarkIcon(CaptionOf(control.Caption).Mark));
    button->setAutoDefault(true);
    return button;
}

QWidget* MakeLabel(const ControlResource& control, QWidget* parent) {
    if (control.Kind == ControlKind::HelpText) {
        auto* help = new QLabel(ResourceText(control.Caption), parent);
        help->setTextFormat(Qt::PlainText);
        help->setWordWrap(true);
        help->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        return help;
    }
    auto* label = new ElidedLabel(parent);
    label->setText(ShowsResult(control) ? QString() : CaptionText(control));
    return label;
}

QWidget* MakeLines(QWidget* parent) {
    auto* lines = new QPlainTextEdit(parent);
    lines->setTabChangesFocus(true);
    return lines;
}

/// The wheel scrolls what is around a field, and changes only the one that is being worked in.
class WholeField : public QSpinBox {
  public:
    using QSpinBox::QSpinBox;

  protected:
    void wheelEvent(QWheelEvent* event) override { hasFocus() ? QSpinBox::wheelEvent(event) : event->ignore(); }
};

QWidget* MakeWhole(QWidget* parent) {
    auto* field = new WholeField(parent);
    field->setFocusPolicy(Qt::StrongFocus);
    field->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    return field;
}

QWidget* MakeNumber(QWidget* parent) {
    auto* field = new QLineEdit(parent);
    auto* numbers = new QDoubleValidator(field);
    numbers->setNotation(QDoubleValidator::ScientificNotation);
    field->setValidator(numbers);
    return field;
}

QWidget* Make(const ControlResource& control, QWidget* parent) {
    switch (control.Kind) {
        case ControlKind::Button:
        case ControlKind::DefaultButton:
            return MakeButton(control, parent);
        case ControlKind::CheckBox:
            return new QCheckBox(CaptionText(control), parent);
        case ControlKind::RadioButton:
            return new QRadioButton(CaptionText(control), parent);
        case ControlKind::GroupBox:
            return new QGroupBox(CaptionText(control), parent);
        case ControlKind::ListBox:
            return new ReorderList(parent);
        case ControlKind::ReportList:
            return new ReportList(parent);
        case ControlKind::Edit:
            return new QLineEdit(parent);
        case ControlKind::MultiLineEdit:
            return MakeLines(parent);
        case ControlKind::IntegerField:
            return MakeWhole(parent);
        case ControlKind::RealField:
            return MakeNumber(parent);
        case ControlKind::TabControl:
            return new QTabWidget(parent);
        default:
            return MakeLabel(control, parent);
    }
}

}  // namespace

QWidget* MakeControlWidget(int dialog, const ControlResource& control, QWidget* parent) {
    QWidget* widget = Make(control, parent);
    const auto [name, tip] = TipOf(dialog, control.Id);
    const QString caption = QString::fromStdString(ResourceCaption(control.Caption).Plain());
    widget->setObjectName(QStringLiteral("control%1").arg(control.Id));
    widget->setAccessibleName(name.isEmpty() && IsCaptioned(control.Kind) ? caption : name);
    widget->setAccessibleDescription(tip);
    widget->setToolTip(tip);
    return widget;
}

bool ShowsResult(const ControlResource& control) {
    const std::string_view caption = control.Caption;
    return control.Kind == ControlKind::Static && control.Id != NoControlId && (caption == "none" || caption.empty());
}

bool IsWrapped(const ControlResource& control) {
    return control.Kind == ControlKind::CheckBox && control.Place.Height >= HeightOfTwoLines;
}

QString CaptionText(const ControlResource& control) {
    return QString::fromStdString(ResourceCaption(control.Caption).Text);
}

}  // namespace quillara
