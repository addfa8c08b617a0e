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
/// is computed once, beside the thread of the windows, and comes in variable by variable. Labels and types can be
/// edited: that makes another table, when it is asked for or this one is no longer shown.
class VariableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum ColumnName { Name, Label, Type, Values, MissingValues, Missing, Distinct, Distribution, Format, ColumnCount };
    /// Of a field of Distribution: a list of how many cases each part has.
    static constexpr int BarsRole = Qt::UserRole;
    static constexpr std::size_t MostEdited = 1000;

    explicit VariableModel(QObject* parent = nullptr);

    [[nodiscard]] static QString KindName(ValueKind kind);
    /// Null: none.
    void Show(std::shared_ptr<const DataTable> table);
    [[nodiscard]] const std::shared_ptr<const DataTable>& Table() const { return Shown; }
    /// Begins to compute what isn't known yet.
    void Summarize();
    /// The values of a variable with their texts, to be edited, the first MostEdited; empty when they aren't known yet,
    /// or of many numbers without texts.
    [[nodiscard]] std::vector<EditedValue> ValuesOf(std::size_t variable) const;
    /// What an editor of these leaves out, for its user; empty: nothing.
    [[nodiscard]] QString LeftOutOf(std::size_t variable) const;
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
    /// The label of a variable, or its type as a ValueKind.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  signals:
    /// There are edits, or there are none any more.
    void editsChanged();
    void tableEdited(std::shared_ptr<const quillara::DataTable> table);
    /// An edit can't be done: why.
    void refused(const QString& why);

  private:
    /// What the cases of a variable have.
    struct Facts {
        VariableSummary Summary;  ///< with the first of many values
        std::string Values;
        std::string MissingValues;
        std::vector<EditedValue> Editable;
        std::size_t EditableInAll = 0;  ///< with those beyond the first MostEdited
    };
    using Known = std::optional<Facts>;

    bool SetLabel(std::size_t variable, const QString& label);
    bool SetKind(std::size_t variable, int kind);
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
