#include "workbench/desktop/data/LabelEditBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "workbench/desktop/data/VariableModel.h"

namespace quillara {

LabelEditBar::LabelEditBar(VariableModel& model, QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 4);
    auto* keep = new QPushButton(tr("&Make a table"), this);
    keep->setObjectName(QStringLiteral("keepEdits"));
    keep->setToolTip(tr("Make a new table with these labels and types, to be saved and explored"));
    auto* drop = new QPushButton(tr("&Undo the edits"), this);
    drop->setObjectName(QStringLiteral("dropEdits"));
    drop->setToolTip(tr("Go back to the labels and types of this table"));
    row->addWidget(new QLabel(
        tr("Edits go into a new table, to be explored from its beginning; this exploration goes on with its own."),
        this));
    row->addWidget(keep);
    row->addWidget(drop);
    row->addStretch();
    connect(keep, &QPushButton::clicked, &model, &VariableModel::KeepEdits);
    connect(drop, &QPushButton::clicked, &model, &VariableModel::DropEdits);
    connect(&model, &VariableModel::editsChanged, this, [this, &model] { setVisible(model.HasEdits()); });
    hide();
}

}  // namespace quillara
