#include "workbench/desktop/window/PreferencesDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>

#include "workbench/desktop/window/Preferences.h"

namespace quillara {
namespace {

QComboBox* Choices(const QStringList& texts, int chosen, const char* name, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->addItems(texts);
    box->setCurrentIndex(chosen);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

QCheckBox* Switch(const QString& text, const QString& tip, bool isOn, QWidget* parent) {
    auto* box = new QCheckBox(text, parent);
    box->setChecked(isOn);
    box->setToolTip(tip);
    return box;
}

}  // namespace

PreferencesDialog::PreferencesDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("preferences"));
    setWindowTitle(tr("Preferences"));
    Preferences& shared = Preferences::Shared();
    QComboBox* theme =
        Choices({tr("As the system"), tr("Light"), tr("Dark")}, static_cast<int>(shared.Theme()), "theme", this);
    theme->setAccessibleName(tr("Colours"));
    theme->setToolTip(tr("Light or dark windows and charts"));
    QComboBox* decimals = Choices({tr("As the system"), tr("Point: 1234.5"), tr("Comma: 1234,5")},
                                  static_cast<int>(shared.DecimalStyle()), "decimals", this);
    decimals->setAccessibleName(tr("Numbers"));
    decimals->setToolTip(tr("How numbers are shown and typed"));
    QCheckBox* motion = Switch(tr("&Motion: bars slide to their new heights"), tr("Without it charts change at once"),
                               shared.HasMotion(), this);
    motion->setObjectName(QStringLiteral("motion"));
    QCheckBox* bars = Switch(tr("&Bars behind the counts of tables"),
                             tr("Each count has a bar of its length behind it"), shared.HasFrequencyBars(), this);
    bars->setObjectName(QStringLiteral("frequencyBars"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Colours:"), theme);
    form->addRow(tr("&Numbers:"), decimals);
    form->addRow(motion);
    form->addRow(bars);
    form->addRow(buttons);
    connect(theme, &QComboBox::currentIndexChanged, this,
            [&shared](int row) { shared.SetTheme(static_cast<Preferences::Look>(row)); });
    connect(decimals, &QComboBox::currentIndexChanged, this,
            [&shared](int row) { shared.SetDecimalStyle(static_cast<Preferences::Decimals>(row)); });
    connect(motion, &QCheckBox::toggled, this, [&shared](bool isOn) { shared.SetMotion(isOn); });
    connect(bars, &QCheckBox::toggled, this, [&shared](bool isOn) { shared.SetFrequencyBars(isOn); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

}  // namespace quillara
