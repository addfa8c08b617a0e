#include "workbench/desktop/data/ValueLabelsDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

namespace quillara {
namespace {

constexpr int LabelColumn = 1;
constexpr int DescriptionColumn = 2;

}  // namespace

ValueLabelsDialog::ValueLabelsDialog(const QString& variable, std::vector<EditedValue> values, QWidget* parent)
    : QDialog(parent),
      Values(std::move(values)),
      Fields(new QTableWidget(static_cast<int>(Values.size()), 3, this)),
      Note(new QLabel(this)) {
    setWindowTitle(tr("Value labels of %1").arg(variable));
    Fields->setObjectName(QStringLiteral("valueLabels"));
    Fields->setAccessibleName(windowTitle());
    Fields->setHorizontalHeaderLabels({tr("Value"), tr("Label"), tr("Description")});
    Fields->verticalHeader()->hide();
    Fields->horizontalHeader()->setStretchLastSection(true);
    for (int row = 0; row < Fields->rowCount(); ++row) {
        const EditedValue& value = Values[static_cast<std::size_t>(row)];
        auto* written = new QTableWidgetItem(value.Written);
        written->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        Fields->setItem(row, 0, written);
        Fields->setItem(row, LabelColumn, new QTableWidgetItem(QString::fromStdString(value.Texts.Label)));
        Fields->setItem(row, DescriptionColumn, new QTableWidgetItem(QString::fromStdString(value.Texts.Description)));
    }
    Fields->resizeColumnToContents(0);
    Fields->horizontalHeader()->setSectionResizeMode(LabelColumn, QHeaderView::Stretch);
    Fields->setCurrentCell(0, LabelColumn);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Note);
    layout->addWidget(Fields);
    layout->addWidget(buttons);
    resize(560, 420);
    Note->setWordWrap(true);
    SetNote({});
}

void ValueLabelsDialog::SetNote(const QString& note) {
    Note->setText(note);
    Note->setVisible(!note.isEmpty());
}

std::vector<EditedValue> ValueLabelsDialog::Edited() const {
    std::vector<EditedValue> edited = Values;
    for (int row = 0; row < Fields->rowCount(); ++row) {
        edited[static_cast<std::size_t>(row)].Texts = {
            Fields->item(row, LabelColumn)->text().trimmed().toStdString(),
            Fields->item(row, DescriptionColumn)->text().trimmed().toStdString()};
    }
    return edited;
}

}  // namespace quillara
