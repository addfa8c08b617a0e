#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/desktop/data/BackgroundWork.h"
#include "workbench/views/VariableSummary.h"

namespace quillara {

/// The variables of a table, a line each, with what its dictionary says of them and what their cases have. The latter
/// is computed once, beside the thread of the windows, and comes in variable by variable.
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
    [[nodiscard]] BackgroundWork& Summarizing() { return *Work; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    /// What the cases of a variable have.
    struct Facts {
        VariableSummary Summary;  ///< with the first of many values
        std::string Values;
        std::string MissingValues;
    };
    using Known = std::optional<Facts>;

    [[nodiscard]] static Facts FactsOf(const Variable& variable);
    void Take(const std::shared_ptr<const DataTable>& table, std::size_t variable, Facts facts);
    [[nodiscard]] QString TextOf(std::size_t variable, int column) const;
    [[nodiscard]] QString TipOf(std::size_t variable, int column) const;

    std::shared_ptr<const DataTable> Shown;
    std::vector<Known> Found;
    BackgroundWork* Work;
};

}  // namespace quillara
