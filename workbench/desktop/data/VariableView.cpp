#include "workbench/desktop/data/VariableView.h"

#include <QHeaderView>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "workbench/desktop/data/DistributionDelegate.h"
#include "workbench/desktop/data/TypeDelegate.h"
#include "workbench/desktop/window/ExplorationModel.h"

namespace quillara {
namespace {

constexpr int WidestInCharacters = 48;

}  // namespace

VariableView::VariableView(QWidget* parent) : QTableView(parent), Variables(new VariableModel(this)) {
    setObjectName(QStringLiteral("variablesView"));
    setAccessibleName(tr("Variables"));
    setModel(Variables);
    setItemDelegateForColumn(VariableModel::Distribution, new DistributionDelegate(this));
    setItemDelegateForColumn(VariableModel::Type, new TypeDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    horizontalHeader()->moveSection(VariableModel::Distribution, VariableModel::Type);  // what is looked at first
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    connect(this, &QAbstractItemView::activated, this, &VariableView::EditValues);
    connect(Variables, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
        if (first.column() == VariableModel::Label) {
            FitColumn(VariableModel::Label);
        }
    });
    connect(&Variables->Summarizing(), &BackgroundWork::ended, this, [this] {
        if (!Variables->Summarizing().IsRunning()) {
            FitColumns();
        }
    });
}

void VariableView::Follow(ExplorationModel& model) {
    connect(&model, &ExplorationModel::replaced, this, [this, &model] { Refresh(model); });
    connect(&model, &ExplorationModel::changed, this, [this, &model] { Refresh(model); });
    connect(
        Variables, &VariableModel::refused, &model,
        [&model](const QString& why) { model.ShowMessage(why.toStdString()); }, Qt::QueuedConnection);
    Refresh(model);
}

void VariableView::Refresh(ExplorationModel& model) {
    Exploration* exploration = model.Present();
    Show(exploration == nullptr || exploration->HasEnded() ? nullptr : exploration->SharedTable());
}

void VariableView::Show(std::shared_ptr<const DataTable> table) {
    if (table == Variables->Table()) {
        return;
    }
    Variables->Show(std::move(table));
    FitColumns();
    if (isVisible()) {
        Variables->Summarize();
    }
}

void VariableView::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    Variables->Summarize();
}

void VariableView::EditValues(const QModelIndex& field) {
    const auto variable = static_cast<std::size_t>(field.row());
    if (field.column() != VariableModel::Values || findChild<ValueLabelsDialog*>() != nullptr) {
        return;
    }
    std::vector<EditedValue> values = Variables->ValuesOf(variable);
    const QString leftOut = Variables->LeftOutOf(variable);
    if (values.empty()) {
        QToolTip::showText(viewport()->mapToGlobal(visualRect(field).bottomLeft()), leftOut, this);
        return;
    }
    const std::shared_ptr<const DataTable> table = Variables->Table();
    ValueLabelsDialog dialog(QString::fromStdString(table->Variables[variable].Name), std::move(values), this);
    dialog.SetNote(leftOut);
    if (dialog.exec() == QDialog::Accepted && table == Variables->Table()) {
        Variables->SetValues(variable, dialog.Edited());
    }
}

void VariableView::FitColumns() {
    for (int column = 0; column < VariableModel::ColumnCount; ++column) {
        FitColumn(column);
    }
}

void VariableView::FitColumn(int column) {
    resizeColumnToContents(column);
    setColumnWidth(column, std::min(columnWidth(column), fontMetrics().averageCharWidth() * WidestInCharacters));
}

}  // namespace quillara
