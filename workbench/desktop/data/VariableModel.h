#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/desktop/data/BackgroundWork.h"
#include "workbench/desktop/data/ValueLabelsDialog.h"
#include "workbench/exploration/LabelEdits.h"
#include "workbench/views/VariableSummary.h"

namespace quillara {

/// The variables of a table, a line each, with what its dictionary says of them and what their cases have. The latter
/// is computed once, beside the thread of the windows, and comes in variable by variable. Labels can be edited: that
/// makes another table, when it is asked for or this one is no longer shown.
class VariableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum ColumnName { Name, Label, Type, Values, MissingValues, Missing, Distinct, Distribution, Format, ColumnCount };
    /// Of a field of Distribution: a list of how many cases each part has.
    static constexpr int BarsRole = Qt::UserRole;

    explicit VariableModel(QObject* parent = nullptr);

    /// Null: none.
    void Show(std::shared_ptr<const DataTable> table);
    [[nodiscard]] const std::shared_ptr<const DataTable>& Table() const { return Shown; }
    /// Begins to compute what isn't known yet.
    void Summarize();
    /// The values of a variable with their texts, to be edited; empty when they aren't known yet or are too many.
    [[nodiscard]] std::vector<EditedValue> ValuesOf(std::size_t variable) const;
    void SetValues(std::size_t variable, const std::vector<EditedValue>& values);
    [[nodiscard]] bool HasEdits() const { return !Edits.IsEmpty(); }
    /// Makes a table of the edits, if there are any (tableEdited).
    void KeepEdits();
    void DropEdits();
    [[nodiscard]] BackgroundWork& Summarizing() { return *Work; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// The label of a variable.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  signals:
    /// There are edits, or there are none any more.
    void editsChanged();
    void tableEdited(std::shared_ptr<const quillara::DataTable> table);

  private:
    /// What the cases of a variable have.
    struct Facts {
        VariableSummary Summary;  ///< with the first of many values
        std::string Values;
        std::string MissingValues;
        std::vector<EditedValue> Editable;
    };
    using Known = std::optional<Facts>;

    [[nodiscard]] static Facts FactsOf(const Variable& variable);
    void Take(const std::shared_ptr<const DataTable>& table, std::size_t variable, Facts facts);
    void ShowValues(std::size_t variable);
    [[nodiscard]] QString TextOf(std::size_t variable, int column) const;
    [[nodiscard]] QString TipOf(std::size_t variable, int column) const;

    std::shared_ptr<const DataTable> Shown;
    std::vector<Known> Found;
    LabelEdits Edits;
    BackgroundWork* Work;
};

}  // namespace quillara
