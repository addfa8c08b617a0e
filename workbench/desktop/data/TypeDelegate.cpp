#include "workbench/desktop/data/TypeDelegate.h"

#include <QComboBox>

#include "workbench/desktop/data/VariableModel.h"

namespace quillara {

QWidget* TypeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& /*index*/) const {
    auto* choice = new QComboBox(parent);
    choice->setObjectName(QStringLiteral("variableType"));
    choice->setAccessibleName(tr("Type of the variable"));
    for (const ValueKind kind : {ValueKind::Number, ValueKind::Text, ValueKind::Date}) {
        choice->addItem(VariableModel::KindName(kind), static_cast<int>(kind));
    }
    // What is chosen is done at once, without leaving the field.
    connect(choice, &QComboBox::activated, this, [this, choice] {
        auto* delegate = const_cast<TypeDelegate*>(this);
        emit delegate->commitData(choice);
        emit delegate->closeEditor(choice);
    });
    return choice;
}

void TypeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* choice = qobject_cast<QComboBox*>(editor);
    choice->setCurrentIndex(choice->findData(index.data(Qt::EditRole)));
}

void TypeDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    const QVariant kind = qobject_cast<QComboBox*>(editor)->currentData();
    if (kind != index.data(Qt::EditRole)) {
        model->setData(index, kind, Qt::EditRole);
    }
}

}  // namespace quillara
